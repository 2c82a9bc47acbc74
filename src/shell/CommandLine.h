#pragma once

#include <string>
#include <vector>

namespace oriolemark {

// The request that the words of the command line make.
struct CommandLine {
  enum class Outcome {
    Open,     // the program starts and opens `files`
    Answer,   // `text` goes to standard output, and the program ends with code 0
    Refusal,  // `text`, one line, goes to standard error, and the program ends with code 2
  };

  Outcome outcome = Outcome::Open;
  std::string text;                // with the end of its last line
  std::vector<std::string> files;  // in their order, as they were typed
};

// Reads the words behind the program's own name. Options of the toolkit are accepted and skipped,
// with one or two dashes. Behind "--" every word is a file.
CommandLine ReadCommandLine(const std::vector<std::string>& words, const std::string& version);

}  // namespace oriolemark

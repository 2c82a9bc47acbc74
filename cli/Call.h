#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/Result.h"
#include "platform/EventSource.h"

namespace oriolemark {

enum class Format { Text, Csv, Json };

// The link that a call names. A part that it does not name is as in the settings of the program
// with windows.
struct LinkChoice {
  int type = 0;          // as in LinkSettings
  std::string device{};  // the serial device's path
  std::string baud{};
  std::optional<int> number{};  // GPIB address, or number of the USB instrument
  std::string library{};        // of GPIB or USB
};

struct Verb;

// A call of the program, as its arguments give it.
struct Call {
  const Verb* verb = nullptr;
  std::vector<std::string> names;  // settings, assignments or keys
  std::string channel;             // "ch1", "ch2" or "both"
  std::string input;               // the file to read
  std::string file;                // the file to write; empty for standard output
  Format format = Format::Text;
  bool overwrite = false;
  bool sim = false;
  std::optional<LinkChoice> link;
  std::string limits;  // "FILE.orm" or "FILE.orm:ITEM"
  std::string item;
  std::string zoom;  // "150%"; empty for the size of the screen
  bool monochrome = false;
  bool noGrid = false;
  std::optional<Milliseconds> every;  // of a watch
  int count = 0;                      // of a watch; 0 for no end
};

// A call that is not to run: a text to show, on standard output if it was asked for.
struct Answer {
  ExitCode code = ExitCode::Success;
  std::string text;
};

}  // namespace oriolemark

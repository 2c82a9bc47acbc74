#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulator/Instrument.h"

struct Options {
  tx5000::Identity identity;
  std::string linkPath;
  std::string socketPath;
  int gpibAddress = 7;
  std::string logPath;
  int baud = 0;
  std::uint32_t seed = 1;
  std::vector<std::string> faults;
  std::vector<std::string> lines;  // for the console, before anything else
  bool help = false;

  // With a socket alone there is no serial line.
  bool HasSerialLine() const { return socketPath.empty() || !linkPath.empty(); }
};

// Nothing, and a line in `error`, where an argument is not understood.
std::optional<Options> ParseOptions(int count, char** arguments, std::string& error);

std::string HelpText();

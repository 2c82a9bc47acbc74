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
  std::vector<std::string> lines;  // console lines, carried out first
  bool help = false;

  // With only a socket there is no serial line.
  bool HasSerialLine() const { return socketPath.empty() || !linkPath.empty(); }
};

// If an argument is not understood, returns nothing and one line in `error`.
std::optional<Options> ParseOptions(int count, char** arguments, std::string& error);

std::string HelpText();

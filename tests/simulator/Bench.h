#pragma once

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/Instrument.h"

// The pieces of a text with ';' between them.
inline std::vector<std::string> Split(std::string_view text) {
  std::vector<std::string> pieces;
  for (std::size_t end = text.find(';'); end != text.npos; end = text.find(';')) {
    pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  pieces.emplace_back(text);
  return pieces;
}

// An instrument on the bench, spoken to in its own words.
struct Bench {
  tx5000::Instrument instrument;

  std::string Ask(std::string_view command) {
    return instrument.Execute(command).value_or("(no reply)");
  }

  // Commands with ';' between them, without replies; whether each was understood.
  bool Send(std::string_view commands) {
    const int before = instrument.UnknownCommands();
    for (const std::string& command : Split(commands)) instrument.Execute(command);
    return instrument.UnknownCommands() == before;
  }

  bool Turn(std::string_view path, std::string_view value) { return instrument.Turn(path, value); }

  void Wait(int milliseconds) { instrument.Advance(std::chrono::milliseconds(milliseconds)); }

  // The samples of a block, read as the last two characters of each token.
  std::vector<int> Read(std::string_view command) {
    const std::string text = Ask(command);
    std::vector<int> samples;
    for (std::size_t i = 0; i + 4 < text.size(); i += 5) {
      samples.push_back(std::stoi(text.substr(i + 2, 2), nullptr, 16));
    }
    return samples;
  }
};

inline int Lowest(const std::vector<int>& samples) {
  return *std::ranges::min_element(samples);
}

inline int Highest(const std::vector<int>& samples) {
  return *std::ranges::max_element(samples);
}

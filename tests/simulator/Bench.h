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

  // Whether the instrument understood a command that has no reply.
  bool Send(std::string_view command) {
    const int before = instrument.UnknownCommands();
    instrument.Execute(command);
    return instrument.UnknownCommands() == before;
  }

  // Commands with ';' between them; whether each was understood.
  bool SendAll(std::string_view commands) {
    bool understood = true;
    for (const std::string& command : Split(commands)) understood = Send(command) && understood;
    return understood;
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
  return *std::min_element(samples.begin(), samples.end());
}

inline int Highest(const std::vector<int>& samples) {
  return *std::max_element(samples.begin(), samples.end());
}

inline int LargestDifference(const std::vector<int>& one, const std::vector<int>& other) {
  int largest = one.size() == other.size() ? 0 : 1000;
  for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i) {
    largest = std::max(largest, std::abs(one[i] - other[i]));
  }
  return largest;
}

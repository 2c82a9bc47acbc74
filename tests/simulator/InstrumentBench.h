#pragma once

#include "simulator/Instrument.h"
#include "support/Tables.h"

namespace oriolemark {

// An instrument on the bench, spoken to in its own words.
struct Bench {
  tx5000::Instrument instrument;

  std::string Ask(std::string_view command) {
    return instrument.Execute(command).value_or("(no reply)");
  }

  // Commands with ';' between them, without replies; whether each was understood.
  bool Send(std::string_view commands) {
    const int before = instrument.UnknownCommands();
    for (const std::string& command : Split(commands, ';')) instrument.Execute(command);
    return instrument.UnknownCommands() == before;
  }

  // The samples of a block, read as the last two characters of each token.
  std::vector<int> Read(std::string_view command) {
    const std::string text = Ask(command);
    std::vector<int> samples;
    for (std::size_t i = 2; i + 2 < text.size(); i += 5) {
      samples.push_back(std::stoi(text.substr(i, 2), nullptr, 16));
    }
    return samples;
  }
};

}  // namespace oriolemark

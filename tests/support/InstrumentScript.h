#pragma once

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/EventSource.h"

namespace oriolemark {

// What a scripted instrument has heard and what it will say, the same over every transport. Answers
// are given in their order, each to the first command that reads as the script says; every other
// command is only noted.
class InstrumentScript {
 public:
  struct Exchange {
    std::string command;
    std::string reply;
    Milliseconds delay;
  };

  // `reply` goes out as it stands, line end and all.
  void Answer(std::string command, std::string reply, Milliseconds delay = Milliseconds(1)) {
    exchanges_.push_back({std::move(command), std::move(reply), delay});
  }

  // The instrument hears a command.
  std::optional<Exchange> Hear(const std::string& command) {
    sent.push_back(command);
    if (exchanges_.empty() || exchanges_.front().command != command) return std::nullopt;
    Exchange taken = std::move(exchanges_.front());
    exchanges_.pop_front();
    return taken;
  }

  // Answers that nothing asked for.
  std::size_t LeftOver() const { return exchanges_.size(); }

  std::vector<std::string> sent;  // commands in order, without their terminators

 private:
  std::deque<Exchange> exchanges_;
};

}  // namespace oriolemark

#pragma once

#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/Faults.h"
#include "simulator/Instrument.h"

namespace tx5000 {

// What ends a command on its way to the instrument.
enum class Framing {
  kEnd,     // GPIB: the END message with the last byte
  kReturn,  // USB: a CR
};

// The instrument behind a connector from which replies have to be fetched: nothing comes by itself.
// A reply ends in LF, and END comes with that byte. What is not fetched stays and is in front of
// the replies that follow. Time is the instrument's. Instrument and faults must outlive it.
class BusSide {
 public:
  BusSide(Instrument& instrument, Faults& faults, Framing framing)
      : instrument_(instrument), faults_(faults), framing_(framing) {}

  // Takes bytes in pieces of any size; `end` tells of END with the last of them. A line longer than
  // a command can be is cut, so it is not understood, and never grows.
  void Receive(std::string_view bytes, bool end);

  // Forgets what was received and not carried out, and all replies.
  void Clear();

  // Bytes that can be fetched now.
  std::size_t Waiting() const;

  struct Piece {
    std::string bytes;
    bool end = false;
  };
  // At most `count` of the bytes that wait, and nothing beyond END.
  Piece FetchUpToEnd(std::size_t count);
  // Exactly `count` bytes, over all ends; nothing, and nothing is lost, where fewer wait.
  std::optional<std::string> Fetch(std::size_t count);

  // When the next reply that is still under way will be there.
  std::optional<std::chrono::milliseconds> NextArrival() const;

  // A fault has pulled the plug.
  bool HasVanished() const { return vanished_; }

 private:
  struct Line {
    std::chrono::milliseconds due;
    std::string bytes;
    bool end;
  };

  bool IsThere(const Line& line) const { return line.due <= instrument_.Now(); }
  void CarryOut();
  void Queue(const Reply& reply);

  Instrument& instrument_;
  Faults& faults_;
  Framing framing_;
  std::string command_;
  std::deque<Line> lines_;  // none of them empty
  std::size_t queuedBytes_ = 0;
  bool vanished_ = false;
};

}  // namespace tx5000

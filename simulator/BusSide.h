#pragma once

#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/Faults.h"
#include "simulator/Instrument.h"

namespace tx5000 {

// The end of a command sent to the instrument.
enum class Framing {
  kEnd,     // GPIB: the END message with the last byte
  kReturn,  // USB: a CR
};

// The instrument behind a connector that sends nothing by itself: replies have to be fetched. A
// reply ends in LF, and END comes with that byte. Bytes that are not fetched stay in front of the
// replies that follow. Time is the instrument's time. Instrument and faults must outlive it.
class BusSide {
 public:
  BusSide(Instrument& instrument, Faults& faults, Framing framing)
      : instrument_(instrument), faults_(faults), framing_(framing) {}

  // Receives bytes in pieces of any size. `end` means that END comes with the last of them. A line
  // longer than any command is cut, so it is not understood and takes no more memory.
  void Receive(std::string_view bytes, bool end);

  // Drops all replies, and what was received and not yet carried out.
  void Clear();

  // Bytes that can be fetched now.
  std::size_t Waiting() const;

  struct Piece {
    std::string bytes;
    bool end = false;
  };
  // Fetches at most `count` of the waiting bytes, and none beyond END.
  Piece FetchUpToEnd(std::size_t count);
  // Fetches exactly `count` bytes, also across END. If fewer wait, returns nothing and keeps them.
  std::optional<std::string> Fetch(std::size_t count);

  // The time at which the next delayed reply can be fetched.
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

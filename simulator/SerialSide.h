#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/Faults.h"
#include "simulator/Instrument.h"

namespace tx5000 {

// Bytes that arrive at the other end some time after the call that returned them.
struct Chunk {
  std::chrono::milliseconds after;
  std::string bytes;
};

// The instrument's serial connector: commands end in CR, replies in LF. Time is the instrument's
// time. The instrument must outlive it. Its settings may be changed directly in between.
class SerialSide {
 public:
  explicit SerialSide(Instrument& instrument) : instrument_(instrument) {}

  // Receives bytes in pieces of any size and carries out each command that they complete. The
  // result is in the order of time. A line longer than any command is cut, so it is not understood
  // and takes no more memory.
  std::vector<Chunk> Receive(std::string_view bytes);

  // At this speed a byte of a reply takes ten bits. 0, the initial value, sends each reply in one
  // piece.
  void SetBaud(int baud) { baud_ = baud; }

  Faults& GetFaults() { return faults_; }

  // A fault has taken the port away. Until it is plugged in, nothing is understood or answered.
  bool HasVanished() const { return vanished_; }
  void PlugIn() { vanished_ = false; }

 private:
  void CarryOut(std::vector<Chunk>& chunks);
  void Send(const Reply& reply, std::vector<Chunk>& chunks);

  Instrument& instrument_;
  Faults faults_;
  std::string line_;
  int baud_ = 0;
  double busyUntil_ = 0;  // ms of the instrument's time; replies queue up
  bool vanished_ = false;
};

}  // namespace tx5000

#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/Faults.h"
#include "simulator/Instrument.h"

namespace tx5000 {

// Bytes that arrive at the other end some time after the call that gave them.
struct Chunk {
  std::chrono::milliseconds after;
  std::string bytes;
};

// The instrument's serial connector: commands end in CR, replies in LF. Time is the instrument's.
// The instrument must outlive it; what a hand turns in between may be done on the instrument
// itself.
class SerialSide {
 public:
  explicit SerialSide(Instrument& instrument) : instrument_(instrument) {}

  // Takes bytes as they come, in pieces of any size, and carries out each command that they
  // complete. The result is in the order of time. A line longer than a command can be is cut, so
  // it is not understood, and never grows.
  std::vector<Chunk> Receive(std::string_view bytes);

  // Replies take ten bits a byte at this speed; 0, the start value, sends each in one piece.
  void SetBaud(int baud) { baud_ = baud; }

  Faults& GetFaults() { return faults_; }

  // A fault has taken the port away. Nothing is understood or answered until it is plugged in.
  bool HasVanished() const { return vanished_; }
  void PlugIn() { vanished_ = false; }

 private:
  void CarryOut(std::vector<Chunk>& chunks);
  void Send(const Reply& reply, std::vector<Chunk>& chunks);

  Instrument& instrument_;
  Faults faults_;
  std::string line_;
  int baud_ = 0;
  double busyUntil_ = 0;  // in ms of the instrument's time; replies queue behind each other
  bool vanished_ = false;
};

}  // namespace tx5000

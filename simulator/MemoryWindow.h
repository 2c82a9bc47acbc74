#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "simulator/Instrument.h"

namespace tx5000 {

// The part of the USB side through which the screen memory is read: three requests, in this order
// each time, choose the memory, the count and the address, and one bulk read takes the bytes.
class MemoryWindow {
 public:
  explicit MemoryWindow(Instrument& instrument) : instrument_(instrument) {}

  // False, and the order has to begin anew, for a request out of turn and for a number that the
  // instrument does not have there. What is no request at all is counted as not understood.
  bool Control(int request, std::uint32_t number);

  // As many bytes as were announced. Nothing for another count, or before the three requests.
  std::optional<std::string> Read(std::uint32_t count);

 private:
  Instrument& instrument_;
  std::size_t step_ = 0;  // of the three, how many have been taken
  std::uint32_t count_ = 0;
  std::uint32_t offset_ = 0;
};

}  // namespace tx5000

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "simulator/Instrument.h"

namespace tx5000 {

// The part of the USB side that reads the screen memory. Each read takes three requests, in this
// order: choose the memory, the count and the address. One bulk read then fetches the bytes.
class MemoryWindow {
 public:
  explicit MemoryWindow(Instrument& instrument) : instrument_(instrument) {}

  // Returns false for a request out of order and for a number that the instrument does not have
  // there. The order must then begin again. A number that is not a request at all is counted as not
  // understood.
  bool Control(int request, std::uint32_t number);

  // Returns as many bytes as were announced. Returns nothing for another count, or before the three
  // requests.
  std::optional<std::string> Read(std::uint32_t count);

 private:
  Instrument& instrument_;
  std::size_t step_ = 0;  // number of the three requests taken so far
  std::uint32_t count_ = 0;
  std::uint32_t offset_ = 0;
};

}  // namespace tx5000

#pragma once

#include <cstdint>
#include <span>

namespace oriolemark {

// Turns the bytes of the instrument's screen memory into colours, 0x00RRGGBB. Each operation fills
// as many colours as there are bytes, or fewer where `colours` is shorter; what lies behind stays.
class ScreenColors {
 public:
  virtual ~ScreenColors() = default;
  // For instruments with a colour display.
  virtual void TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) = 0;
  // For the others.
  virtual void TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) = 0;
};

}  // namespace oriolemark

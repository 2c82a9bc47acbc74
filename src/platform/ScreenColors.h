#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace oriolemark {

// Turns the bytes of the instrument's screen memory into colours, 0x00RRGGBB. Each operation fills
// one colour for each byte, as far as `colours` reaches, and leaves the rest unchanged.
class ScreenColors {
 public:
  virtual ~ScreenColors() = default;
  // Which library the colours come from, or why not from the one that the settings name. Plain
  // text, UTF-8. Empty if the settings name none.
  virtual std::string Meaning() { return {}; }
  // For instruments with a colour display.
  virtual void TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) = 0;
  // For instruments without one.
  virtual void TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) = 0;
};

}  // namespace oriolemark

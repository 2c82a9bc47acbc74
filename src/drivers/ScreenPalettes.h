#pragma once

#include "platform/ScreenColors.h"

namespace oriolemark {

// Two palettes of 256 entries, because the maker's own are unknown. A byte of a colour display is
// read as red (three high bits), green (next three) and blue (two low bits), each spread evenly
// over 0 to 255. A byte of a monochrome display is a black dot if it is 0, otherwise a white dot.
class ScreenPalettes : public ScreenColors {
 public:
  void TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;
  void TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;
};

}  // namespace oriolemark

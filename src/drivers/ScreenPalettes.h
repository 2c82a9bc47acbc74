#pragma once

#include "platform/ScreenColors.h"

namespace oriolemark {

// Two palettes of 256 entries, for want of the maker's own. A byte of a colour display is taken for
// red (its three high bits), green (the next three) and blue (the two low ones), each spread evenly
// over 0 to 255. A byte of a monochrome display is a dot that is dark (0, black) or lit (any other,
// white).
class ScreenPalettes : public ScreenColors {
 public:
  void TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;
  void TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;
};

}  // namespace oriolemark

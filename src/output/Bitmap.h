#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace oriolemark {

// The bytes of a Windows bitmap file with 24 bits a pixel, at 96 dpi. The pixels are rows from the
// top, each 0x..RRGGBB. A last row that is not full is left out. The picture is not larger than
// 64 million pixels, so that every size in the file fits its 32 bits.
std::string BitmapBytes(std::span<const std::uint32_t> pixels, int width);

}  // namespace oriolemark

#pragma once

#include <bit>
#include <cstdint>

namespace oriolemark {

// Rounds to the nearest integer, ties to even. A value outside the range of int gives the nearest
// end of that range. NaN gives 0.
int RoundToInt(double value);

// Positions within this many pixels are rounded as they are. Products of two of them fit 64 bits.
inline constexpr double kPixelReach = 1 << 28;

// False for NaN.
constexpr bool InPixelReach(double value) {
  return value >= -kPixelReach && value <= kPixelReach;
}

// RoundToInt for values in reach. At this size a double has no bits left for a fraction, and its
// low bits are the integer.
inline int RoundInReach(double value) {
  constexpr double kNoFraction = 3.0 * (std::int64_t{1} << 51);
  return static_cast<std::int32_t>(std::bit_cast<std::int64_t>(value + kNoFraction));
}

}  // namespace oriolemark

#include "drivers/ScreenPalettes.h"

#include <algorithm>
#include <array>

namespace oriolemark {
namespace {

using Palette = std::array<std::uint32_t, 256>;

constexpr std::uint32_t kWhite = 0xFFFFFF;

// Scales `level` from 0..`highest` to 0..255.
constexpr std::uint32_t Spread(std::uint32_t level, std::uint32_t highest) {
  return (level * 255 + highest / 2) / highest;
}

constexpr Palette MakeColourPalette() {
  Palette palette{};
  for (std::uint32_t byte = 0; byte < palette.size(); ++byte) {
    palette[byte] =
        Spread(byte >> 5, 7) << 16 | Spread(byte >> 2 & 7, 7) << 8 | Spread(byte & 3, 3);
  }
  return palette;
}

constexpr Palette MakeMonoPalette() {
  Palette palette{};
  for (std::size_t byte = 1; byte < palette.size(); ++byte) palette[byte] = kWhite;
  return palette;
}

constexpr Palette kColourPalette = MakeColourPalette();
constexpr Palette kMonoPalette = MakeMonoPalette();

void Convert(const Palette& palette, std::span<const std::uint8_t> raw,
             std::span<std::uint32_t> colours) {
  const auto bytes = raw.first(std::min(raw.size(), colours.size()));
  std::transform(bytes.begin(), bytes.end(), colours.begin(),
                 [&palette](std::uint8_t byte) { return palette[byte]; });
}

}  // namespace

void ScreenPalettes::TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) {
  Convert(kColourPalette, raw, colours);
}

void ScreenPalettes::TransMono(std::span<const std::uint8_t> raw,
                               std::span<std::uint32_t> colours) {
  Convert(kMonoPalette, raw, colours);
}

}  // namespace oriolemark

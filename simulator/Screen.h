#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "simulator/Acquisition.h"

// The instrument's own screen: 320 by 240 pixels, one byte each, rows from the top. A byte is a
// colour: three bits of red (the highest), three of green and two of blue. An instrument without
// colours lights every ink except the dark one.
namespace tx5000 {

inline constexpr int kScreenWidth = 320;
inline constexpr int kScreenHeight = 240;
inline constexpr std::size_t kScreenBytes = std::size_t{kScreenWidth} * kScreenHeight;

enum Ink : std::uint8_t {
  kDarkInk = 0x00,
  kGridInk = 0x49,
  kChannel1Ink = 0xFC,
  kChannel2Ink = 0x1F,
  kTextInk = 0xFF,
};

// The position of the traces. Sample i of n is in column kTraceLeft + i * 300 / n. The value 26 is
// in row kTraceTop; each further count is one row lower, up to 225. Values beyond are drawn at the
// edge.
inline constexpr int kTraceLeft = 10;
inline constexpr int kTraceTop = 19;

struct ScreenState {
  bool running = true;
  bool menuShown = false;
};

// Draws the record that a block would be read from, with the present settings.
std::vector<std::uint8_t> DrawScreen(const Settings& settings, const Inputs& inputs,
                                     const Record& record, ScreenState state);

}  // namespace tx5000

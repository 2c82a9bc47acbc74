#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "simulator/Acquisition.h"

// The instrument's own screen: 320 by 240 pixels, a byte each, rows from the top. A byte is a
// colour, with three bits of red, three of green and two of blue, red highest; on an instrument
// without colours all but the dark one are lit.
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

// Where the traces stand: sample i of n is in column kTraceLeft + i * 300 / n, and its row is
// kTraceTop for the value 26, one lower for each count, up to 225. What is beyond shows at the
// edge.
inline constexpr int kTraceLeft = 10;
inline constexpr int kTraceTop = 19;

struct ScreenState {
  bool running = true;
  bool menuShown = false;
};

// The same record that a block would be taken from, under the settings of the moment.
std::vector<std::uint8_t> DrawScreen(const Settings& settings, const Inputs& inputs,
                                     const Record& record, ScreenState state);

}  // namespace tx5000

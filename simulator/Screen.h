#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/Acquisition.h"
#include "simulator/Bitmap.h"
#include "simulator/Panel.h"

// Draws the instrument's screen. From the top: run state, time base, delay and acquisition; the
// grid with its traces, and the menu in front of its right end; the channels; the trigger.
namespace tx5000 {

// The position of the traces. Sample i of n is in column kTraceLeft + i * 300 / n. The value 26 is
// in row kTraceTop; each further count is one row lower, up to 225. Values beyond are drawn at the
// edge.
inline constexpr int kTraceLeft = 10;
inline constexpr int kTraceTop = 19;
// The menu, if one is shown, covers the columns from here on.
inline constexpr int kMenuLeft = 252;

// A menu as it is written, beside the five soft keys.
struct MenuTexts {
  struct Entry {
    std::string label;
    std::string value;
  };
  std::string title;
  std::array<Entry, 5> entries;
};

struct ScreenState {
  bool running = true;
  std::string model;  // written where the menu's title would be
  MenuTexts menu;     // drawn if the panel shows it
};

// Draws the record that a block would be read from, with the present settings.
std::vector<std::uint8_t> DrawScreen(const Settings& settings, const Inputs& inputs,
                                     const Record& record, const Panel& panel,
                                     const ScreenState& state);

}  // namespace tx5000

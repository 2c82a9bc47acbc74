#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "simulator/Settings.h"

namespace tx5000 {

// The menus that a key opens. The one of the trigger depends on its method.
enum class Menu {
  kChannel1,
  kChannel2,
  kAcquire,
  kDisplay,
  kCursor,
  kMeasure,
  kStorage,
  kUtility,
  kMath,
  kReference,
  kTime,
  kTrigger,
};

// Choices that are made in a menu only. Their texts are in OptionTexts.
enum class Option {
  kCursors,
  kCursorSource,
  kCursor1,
  kCursor2,
  kMeasured,  // the measures are of this channel's trace
  kMeasure1,  // the measures that the menu shows
  kMeasure2,
  kMeasure3,
  kMeasure4,
  kSetup,
  kMath,
  kReferenceSource,
  kReferenceShown,
  kCount
};

enum class Cursors { kOff, kVolt, kTime };
enum class Math { kOff, kSum, kDifference };

// The texts of an option, in the order in which its soft key goes through them.
std::span<const std::string_view> OptionTexts(Option option);

// The state of the front panel beyond the settings.
struct Panel {
  Panel();

  std::size_t& At(Option option) { return chosen[static_cast<std::size_t>(option)]; }
  std::size_t At(Option option) const { return chosen[static_cast<std::size_t>(option)]; }
  std::string_view Text(Option option) const { return OptionTexts(option)[At(option)]; }
  Channel ChannelOf(Option option) const { return At(option) == 0 ? Channel::k1 : Channel::k2; }
  Cursors ShownCursors() const { return static_cast<Cursors>(At(Option::kCursors)); }
  Math Operation() const { return static_cast<Math>(At(Option::kMath)); }
  // The distance of a cursor from the screen's middle, up or to the right.
  int DivisionsOf(Option cursor) const;

  bool menuShown = true;
  Menu menu = Menu::kChannel1;     // the one shown last, if none is shown now
  Channel selected = Channel::k1;  // chosen by its key; the vertical keys act on it
  std::array<std::size_t, static_cast<std::size_t>(Option::kCount)> chosen{};
  std::array<std::optional<Settings>, 4> setups;
  std::vector<std::uint8_t> reference;  // samples; none before the first is saved
};

}  // namespace tx5000

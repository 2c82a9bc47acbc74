#pragma once

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

// What the front panel knows beyond the settings.
struct Panel {
  bool menuShown = true;
  Menu menu = Menu::kChannel1;     // the one shown last, if none is shown now
  Channel selected = Channel::k1;  // chosen by its key; the vertical keys act on it
};

}  // namespace tx5000

#pragma once

#include <functional>
#include <vector>

#include "platform/MenuEntry.h"

namespace oriolemark {

// A menu that opens at the mouse pointer. The form owns the entries; null is a separator.
struct PopupMenu {
  std::vector<MenuEntry*> entries;
  // The toolkit's side opens the menu here.
  std::function<void()> onPopup;

  void Popup() const {
    if (onPopup) onPopup();
  }
};

}  // namespace oriolemark

#pragma once

#include <functional>
#include <vector>

#include "platform/MenuEntry.h"

namespace oriolemark {

// A menu that opens at the mouse pointer. The entries belong to its form; null is a separator.
struct PopupMenu {
  std::vector<MenuEntry*> entries;
  // The toolkit's side opens it.
  std::function<void()> onPopup;

  void Popup() const {
    if (onPopup) onPopup();
  }
};

}  // namespace oriolemark

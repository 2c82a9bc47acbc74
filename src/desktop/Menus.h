#pragma once

#include <functional>
#include <vector>

#include "platform/MenuEntry.h"

class QAction;
class QMenu;

namespace oriolemark {

// Puts the entries into the menu, and those of further menus into theirs; null is a separator.
// `added` sees each action with its entry.
void FillMenu(QMenu& menu, const std::vector<MenuEntry*>& entries,
              const std::function<void(QAction&, MenuEntry&)>& added = {});

}  // namespace oriolemark

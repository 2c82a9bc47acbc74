#pragma once

#include <vector>

#include "platform/MenuEntry.h"

class QMenu;

namespace oriolemark {

// Puts the entries into the menu, and those of further menus into theirs; null is a separator.
void FillMenu(QMenu& menu, const std::vector<MenuEntry*>& entries);

}  // namespace oriolemark

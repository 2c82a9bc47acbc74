#pragma once

#include <vector>

#include "platform/MenuEntry.h"

class QMenu;

namespace oriolemark {

// Adds the entries to the menu, with their submenus. A null entry is a separator.
void FillMenu(QMenu& menu, const std::vector<MenuEntry*>& entries);

}  // namespace oriolemark

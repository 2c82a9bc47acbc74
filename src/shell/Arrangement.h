#pragma once

#include <vector>

#include "platform/WindowUnits.h"

namespace oriolemark {

// The arrange codes of the Window menu.
enum class Arrangement { Cascade = 0, TileHorizontal = 1, TileVertical = 2, ArrangeIcons = 3 };

// Places for `count` child windows, first at the back, in an area at (0, 0), all in window units.
// Tiles fill the area: horizontal ones lie above each other, vertical ones stand side by side, and
// beyond three windows both become a grid. Icons line up along the lower edge, each of the size
// `icon`.
std::vector<UnitRect> ArrangeWindows(Arrangement arrangement, double width, double height,
                                     int count, const UnitRect& icon);

}  // namespace oriolemark

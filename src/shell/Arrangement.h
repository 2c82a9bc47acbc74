#pragma once

#include <vector>

#include "platform/WindowUnits.h"

namespace oriolemark {

// The arrangement codes of the Window menu.
enum class Arrangement { Cascade = 0, TileHorizontal = 1, TileVertical = 2, ArrangeIcons = 3 };

// Places for `count` child windows in an area at (0, 0), the rearmost window first, all in window
// units. Tiles fill the area: horizontal tiles lie above each other, vertical tiles side by side.
// With more than three windows both form a grid. Icons line up along the lower edge, each of the
// size of `icon`.
std::vector<UnitRect> ArrangeWindows(Arrangement arrangement, double width, double height,
                                     int count, const UnitRect& icon);

}  // namespace oriolemark

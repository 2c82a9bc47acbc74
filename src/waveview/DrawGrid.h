#pragma once

#include "waveview/WaveSurface.h"

namespace oriolemark {

enum class GridDots { Hidden, Shown };

// Clears the picture and draws the frame, the ticks, the grid dots if shown, and the brand text.
// Leaves bold off and the line width at 1.
void DrawScrGrid(const WaveSurface& surface, GridDots dots);

}  // namespace oriolemark

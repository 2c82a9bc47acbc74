#pragma once

#include <string>

#include "waveview/WaveSurface.h"

namespace oriolemark {

// The texts around a trace. Ranges, offsets and times are given as the instrument's replies.

// Draws the title and the ranges of an X-Y figure. Leaves bold on.
void DrawXYStatus(const WaveSurface& surface, const std::string& ch1Range,
                  const std::string& ch2Range);
// Draws the ground marker and the volts text of "CH1" or "CH2" in the present colour. Draws neither
// if the ground level is outside the grid.
void DrawChannelStatus(const WaveSurface& surface, const std::string& channel,
                       const std::string& offset, const std::string& range);
// Draws the delay and time base texts, and the trigger marks if the trigger is inside the grid.
void DrawTimeStatus(const WaveSurface& surface, const std::string& timeBase,
                    const std::string& delay);

}  // namespace oriolemark

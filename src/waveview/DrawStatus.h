#pragma once

#include <string>

#include "waveview/WaveSurface.h"

namespace oriolemark {

// The texts round a trace. Texts of ranges, offsets and times are the instrument's replies.

// Title and ranges of an X-Y figure. Leaves bold on.
void DrawXYStatus(const WaveSurface& surface, const std::string& ch1Range,
                  const std::string& ch2Range);
// Ground marker and volts text of "CH1" or "CH2", in the colour that is set; neither where the
// ground level is not inside the grid.
void DrawChannelStatus(const WaveSurface& surface, const std::string& channel,
                       const std::string& offset, const std::string& range);
// Trigger marks where the trigger is inside the grid, delay text and time base text.
void DrawTimeStatus(const WaveSurface& surface, const std::string& timeBase,
                    const std::string& delay);

}  // namespace oriolemark

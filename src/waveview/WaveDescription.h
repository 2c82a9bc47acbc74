#pragma once

#include <string>

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveCursors.h"

namespace oriolemark {

// What the picture of a record shows, in words, for those who cannot see it: mode, channels,
// scales, and the read-outs of the cursors that are on, which are measured where they are drawn.
std::string DescribeWave(const WaveRecord& record, const WaveCursors& cursors, double zoom);

}  // namespace oriolemark

#pragma once

#include <string>

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveCursors.h"

namespace oriolemark {

// Describes the picture of a record in words, for users who cannot see it: mode, channels, scales,
// and the read-outs of the cursors that are on. The read-outs are measured at the positions drawn.
std::string DescribeWave(const WaveRecord& record, const WaveCursors& cursors, double zoom);

}  // namespace oriolemark

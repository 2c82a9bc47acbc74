#pragma once

#include <array>
#include <vector>

#include "datasheet/records/WaveRecord.h"
#include "platform/Canvas.h"

namespace oriolemark {

// The traces of a benchmark: six periods of a sine with two rows of noise, six of a
// square wave, or noise from edge to edge.
enum class Signal { Sine, Square, Noise };

inline constexpr std::array kTraces{&WaveRecord::CH1Data, &WaveRecord::CH1Min, &WaveRecord::CH2Data,
                                    &WaveRecord::CH2Min};

// Makes the record an envelope of both channels, so that there are four traces.
void FillRecord(WaveRecord& record, Signal signal, int count);

// The points of a trace in grid units, as the view draws them.
std::vector<Point> PointsOf(const SampleArray& samples, int count);

}  // namespace oriolemark

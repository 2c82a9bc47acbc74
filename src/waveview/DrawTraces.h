#pragma once

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {

// Whether the record holds channel 1 or 2.
bool ShowsChannel(const WaveRecord& record, int number);

// All traces and status texts of a record, over the grid. A record without data draws nothing.
void DrawOSC(const WaveSurface& surface, const WaveRecord& record);

// Traces, in the colour that is set. The count spreads the samples over the grid's width and is no
// limit: the walk ends at the right edge or at the end of the array. A count of 0 or less draws
// the first segment alone.
void DrawTrace(const WaveSurface& surface, const SampleArray& samples, int count);
// The spectrum takes the same walk.
void DrawFFT(const WaveSurface& surface, const SampleArray& rows, int count);
// Rolling display: what lies between `start` and `start` + `width` grid units, both included, is
// blank.
void DrawScanTrace(const WaveSurface& surface, const SampleArray& samples, int count, int start,
                   int width);
// The figure of channel 1 across and channel 2 down, a dot a sample; the last one is not drawn.
void DrawXYDots(const WaveSurface& surface, const SampleArray& ch1, const SampleArray& ch2,
                int count);

}  // namespace oriolemark

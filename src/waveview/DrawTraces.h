#pragma once

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {

// Whether the record holds channel 1 or 2.
bool ShowsChannel(const WaveRecord& record, int number);

// Draws all traces and status texts of a record over the grid. Draws nothing for a record without
// data.
void DrawOSC(const WaveSurface& surface, const WaveRecord& record);

// Draws a trace in the present colour. `count` sets how many samples fill the grid's width. It is
// not a limit: the trace ends at the right edge or at the end of the array. A count of 0 or less
// draws only the first segment.
void DrawTrace(const WaveSurface& surface, const SampleArray& samples, int count);
// Draws the spectrum in the same way.
void DrawFFT(const WaveSurface& surface, const SampleArray& rows, int count);
// Draws a trace of the rolling display. It is blank from `start` to `start` + `width` grid units,
// both included. The first segment is always drawn.
void DrawScanTrace(const WaveSurface& surface, const SampleArray& samples, int count, int start,
                   int width);
// Draws the figure of channel 1 across and channel 2 down, one dot per sample. The last sample is
// not drawn.
void DrawXYDots(const WaveSurface& surface, const SampleArray& ch1, const SampleArray& ch2,
                int count);

}  // namespace oriolemark

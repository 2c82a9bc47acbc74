#pragma once

#include <string>

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveCursors.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {

// The values of the read-outs. A value is empty if the record lacks the scale for it.
struct Readouts {
  std::string frequency;
  std::string time;
  std::string ch1;
  std::string ch2;
};

// Measures between the pixel positions of the cursors, even if the cursors are off.
Readouts MakeReadouts(const WaveRecord& record, const WaveCursors& cursors, double zoom);

// Draws the cursor lines, their end marks and the read-outs on top of the finished picture. Clamps
// the cursors' pixel positions to the grid.
void DrawCursors(const WaveSurface& surface, const WaveRecord& record, WaveCursors& cursors);

// Draws only the read-outs: distances between the pixel positions, in the record's units.
void DisplayCursorM(const WaveSurface& surface, const WaveRecord& record,
                    const WaveCursors& cursors);

}  // namespace oriolemark

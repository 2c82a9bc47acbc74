#pragma once

#include <string>

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveCursors.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {

// The values of the read-outs, each empty where the record lacks the scale for it.
struct Readouts {
  std::string frequency;
  std::string time;
  std::string ch1;
  std::string ch2;
};

// Measured between the pixel positions of the cursors, whether they are on or not.
Readouts MakeReadouts(const WaveRecord& record, const WaveCursors& cursors, double zoom);

// Cursor lines, their end marks and the read-outs, over a picture that is otherwise done. Clamps
// the cursors' pixel positions to the grid.
void DrawCursors(const WaveSurface& surface, const WaveRecord& record, WaveCursors& cursors);

// The read-outs alone: distances between the pixel positions in the record's units.
void DisplayCursorM(const WaveSurface& surface, const WaveRecord& record,
                    const WaveCursors& cursors);

}  // namespace oriolemark

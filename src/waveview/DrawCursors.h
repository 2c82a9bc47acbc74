#pragma once

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveCursors.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {

// Cursor lines, their end marks and the read-outs, over a picture that is otherwise done. Clamps
// the cursors' pixel positions to the grid.
void DrawCursors(const WaveSurface& surface, const WaveRecord& record, WaveCursors& cursors);

// The read-outs alone: distances between the pixel positions in the record's units.
void DisplayCursorM(const WaveSurface& surface, const WaveRecord& record,
                    const WaveCursors& cursors);

}  // namespace oriolemark

#pragma once

#include <cstdint>

#include "platform/Canvas.h"
#include "platform/Picture.h"

namespace oriolemark {

// The two pairs of measuring cursors of one view. Base is a position in grid units and does not
// depend on the zoom. Pos is the same position in pixels of the picture; every repaint calculates
// it again first.
struct WaveCursors {
  double X1Base = 0;
  double X2Base = 0;
  double Y1Base = 0;
  std::int16_t Y2Base = 0;
  double X1Pos = 0;
  double X2Pos = 0;
  double Y1Pos = 0;
  std::int16_t Y2Pos = 0;
  bool CursorXOn = false;
  bool CursorYOn = false;
  bool DragX1 = false;
  bool DragX2 = false;
  bool DragY1 = false;
  bool DragY2 = false;
};

// Gives cursors without a position their first one: the second and the tenth division across, the
// second and the sixth division down.
void PlaceCursors(WaveCursors& cursors);

// Calculates the pixel positions from the bases. A whole-number position that does not fit 16 bits
// is not stored.
void FollowZoom(WaveCursors& cursors, double zoom);

// Keeps the pixel positions two pixels inside the grid. Does not change the bases.
void ClampCursors(WaveCursors& cursors, double zoom);

// Starts dragging the cursors within three pixels of the mouse, at most one of each pair.
void SeizeCursors(WaveCursors& cursors, Point mouse);
// Moves the dragged cursor to the mouse, an X cursor before a Y cursor. Returns true if one moved.
bool DragCursor(WaveCursors& cursors, Point mouse, double zoom);
void ReleaseCursors(WaveCursors& cursors);

enum class CursorLine { X1, X2, Y1, Y2 };
// Moves one cursor by so many grid units, but not beyond the grid's edge. Returns true if the
// cursor is shown.
bool StepCursor(WaveCursors& cursors, CursorLine line, int units);

// The shape of the pointer for this mouse position.
MousePointer PointerOver(const WaveCursors& cursors, Point mouse, double zoom);

}  // namespace oriolemark

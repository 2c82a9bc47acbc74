#pragma once

#include <cstdint>

#include "platform/Canvas.h"
#include "platform/Picture.h"

namespace oriolemark {

// The two pairs of measuring cursors of one view. Base is in grid units and does not depend on the
// zoom; Pos is the same in pixels of the picture, made anew at the head of every repaint.
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

// Cursors that have no place yet get the second and the tenth division across, the second and the
// sixth down.
void PlaceCursors(WaveCursors& cursors);

// Derives the pixel positions from the bases. A whole position beyond 16 bits is not stored.
void FollowZoom(WaveCursors& cursors, double zoom);

// Keeps the pixel positions two pixels inside the grid; the bases stay where the user put them.
void ClampCursors(WaveCursors& cursors, double zoom);

// A press seizes what lies within three pixels, at most one cursor of each pair.
void SeizeCursors(WaveCursors& cursors, Point mouse);
// Moves the cursor that is held to the mouse, an X cursor before a Y one; true when one moved.
bool DragCursor(WaveCursors& cursors, Point mouse, double zoom);
void ReleaseCursors(WaveCursors& cursors);

enum class CursorLine { X1, X2, Y1, Y2 };
// Moves one cursor by grid units, no further than the grid's edge; true when it is shown.
bool StepCursor(WaveCursors& cursors, CursorLine line, int units);

// The pointer to show with the mouse here.
MousePointer PointerOver(const WaveCursors& cursors, Point mouse, double zoom);

}  // namespace oriolemark

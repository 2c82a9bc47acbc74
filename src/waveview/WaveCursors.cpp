#include "waveview/WaveCursors.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/Rounding.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {
namespace {

constexpr double kReach = 3;  // pixels from a cursor within which the mouse can seize it
constexpr double kInset = 2;  // pixels that a cursor keeps inside the grid

// Stores a whole number. One that does not fit 16 bits is not stored.
void StoreWhole(std::int16_t& held, double value) {
  const int whole = RoundToInt(value);
  if (whole < std::numeric_limits<std::int16_t>::min() ||
      whole > std::numeric_limits<std::int16_t>::max()) {
    return;
  }
  held = static_cast<std::int16_t>(whole);
}

bool Near(double position, double mouse) {
  return std::abs(mouse - position) < kReach;
}

// Applies the lower limit first. On a grid of a few pixels the upper limit wins.
double Clamped(double position, double gridEnd) {
  return std::min(std::max(position, kMargin + kInset), gridEnd - kInset);
}

bool Inside(double mouse, double gridEnd) {
  return mouse > kMargin && mouse < gridEnd;
}

void DragTo(double& pos, double& base, double mouse, double zoom) {
  pos = mouse - kMargin;
  base = pos / zoom;
}

}  // namespace

void PlaceCursors(WaveCursors& cursors) {
  if (cursors.X1Pos > 0) return;
  cursors.X1Pos = cursors.X1Base = 2 * kDivision;
  cursors.X2Pos = cursors.X2Base = 10 * kDivision;
  cursors.Y1Pos = cursors.Y1Base = 2 * kDivision;
  StoreWhole(cursors.Y2Base, 6 * kDivision);
  cursors.Y2Pos = cursors.Y2Base;
}

void FollowZoom(WaveCursors& cursors, double zoom) {
  cursors.X1Pos = zoom * cursors.X1Base + kMargin;
  cursors.X2Pos = zoom * cursors.X2Base + kMargin;
  cursors.Y1Pos = zoom * cursors.Y1Base + kMargin;
  StoreWhole(cursors.Y2Pos, zoom * cursors.Y2Base + kMargin);
}

void ClampCursors(WaveCursors& cursors, double zoom) {
  const double right = kGridWidth * zoom + kMargin;
  const double bottom = kGridHeight * zoom + kMargin;
  cursors.X1Pos = Clamped(cursors.X1Pos, right);
  cursors.X2Pos = Clamped(cursors.X2Pos, right);
  cursors.Y1Pos = Clamped(cursors.Y1Pos, bottom);
  StoreWhole(cursors.Y2Pos, Clamped(cursors.Y2Pos, bottom));
}

void SeizeCursors(WaveCursors& cursors, Point mouse) {
  if (cursors.CursorXOn) {
    if (Near(cursors.X1Pos, mouse.x)) {
      cursors.DragX1 = true;
    } else if (Near(cursors.X2Pos, mouse.x)) {
      cursors.DragX2 = true;
    }
  }
  if (cursors.CursorYOn) {
    if (Near(cursors.Y1Pos, mouse.y)) {
      cursors.DragY1 = true;
    } else if (Near(cursors.Y2Pos, mouse.y)) {
      cursors.DragY2 = true;
    }
  }
}

bool DragCursor(WaveCursors& cursors, Point mouse, double zoom) {
  if (!cursors.CursorXOn && !cursors.CursorYOn) return false;
  if (cursors.DragX1) {
    DragTo(cursors.X1Pos, cursors.X1Base, mouse.x, zoom);
  } else if (cursors.DragX2) {
    DragTo(cursors.X2Pos, cursors.X2Base, mouse.x, zoom);
  } else if (cursors.DragY1) {
    DragTo(cursors.Y1Pos, cursors.Y1Base, mouse.y, zoom);
  } else if (cursors.DragY2) {
    StoreWhole(cursors.Y2Pos, mouse.y - kMargin);
    StoreWhole(cursors.Y2Base, cursors.Y2Pos / zoom);
  } else {
    return false;
  }
  return true;
}

void ReleaseCursors(WaveCursors& cursors) {
  cursors.DragX1 = cursors.DragX2 = cursors.DragY1 = cursors.DragY2 = false;
}

bool StepCursor(WaveCursors& cursors, CursorLine line, int units) {
  const bool across = line == CursorLine::X1 || line == CursorLine::X2;
  if (!(across ? cursors.CursorXOn : cursors.CursorYOn)) return false;
  const auto stepped = [&](double base) {
    return std::clamp(base + units, 0.0, across ? kGridWidth : kGridHeight);
  };
  if (line == CursorLine::Y2) {
    StoreWhole(cursors.Y2Base, stepped(cursors.Y2Base));
    return true;
  }
  double& base = line == CursorLine::X1   ? cursors.X1Base
                 : line == CursorLine::X2 ? cursors.X2Base
                                          : cursors.Y1Base;
  base = stepped(base);
  return true;
}

MousePointer PointerOver(const WaveCursors& cursors, Point mouse, double zoom) {
  if (!cursors.CursorXOn && !cursors.CursorYOn) return MousePointer::Arrow;
  if (cursors.DragX1 || cursors.DragX2) return MousePointer::WestEast;
  if (cursors.DragY1 || cursors.DragY2) return MousePointer::NorthSouth;
  if (cursors.CursorYOn && Inside(mouse.x, kGridWidth * zoom + kMargin) &&
      (Near(cursors.Y1Pos, mouse.y) || Near(cursors.Y2Pos, mouse.y))) {
    return MousePointer::NorthSouth;
  }
  if (cursors.CursorXOn && Inside(mouse.y, kGridHeight * zoom + kMargin) &&
      (Near(cursors.X1Pos, mouse.x) || Near(cursors.X2Pos, mouse.x))) {
    return MousePointer::WestEast;
  }
  return MousePointer::Arrow;
}

}  // namespace oriolemark

#pragma once

#include "platform/Canvas.h"
#include "platform/Rounding.h"
#include "waveview/TracePlans.h"

namespace oriolemark {

// The size of the instrument's screen in grid units: 12 by 8 divisions of 25. Sample rows are
// counted in the same units from the top.
inline constexpr double kGridWidth = 300;
inline constexpr double kGridHeight = 200;
inline constexpr double kDivision = 25;
// The margin at the left and at the top in pixels, the same at every zoom.
inline constexpr double kMargin = 25;
// Size of the whole picture at zoom 1.
inline constexpr double kPictureWidth = 350;
inline constexpr double kPictureHeight = 250;
// The position of the status texts in grid units, and of the titles in pixels.
inline constexpr double kStatusLine = 204;
inline constexpr double kTitleLine = 10;

struct WaveColors {
  Color background;
  Color frame;  // with its ticks and the dots of the grid
  Color brand;
  Color ch1;
  Color ch2;
  Color spectrum;
  Color xyDots;
  Color trigger;
  Color timeBase;
  Color cursors;
  Color ch1Readout;
  Color ch2Readout;
  Color timeReadout;
};

inline constexpr WaveColors kOnBlack{
    .background = {0, 0, 0},
    .frame = {192, 192, 192},
    .brand = {255, 128, 0},
    .ch1 = {255, 255, 0},
    .ch2 = {0, 255, 255},
    .spectrum = {0, 255, 0},
    .xyDots = {0, 255, 0},
    .trigger = {255, 128, 0},
    .timeBase = {255, 255, 255},
    .cursors = {0, 128, 200},
    .ch1Readout = {255, 255, 0},
    .ch2Readout = {0, 255, 255},
    .timeReadout = {255, 0, 255},
};

inline constexpr WaveColors kBlackOnWhite{
    .background = {255, 255, 255},
    .frame = {0, 0, 0},
    .brand = {0, 0, 0},
    .ch1 = {0, 0, 0},
    .ch2 = {0, 0, 0},
    .spectrum = {0, 255, 0},  // green on white too, so that it stands out from the traces
    .xyDots = {0, 0, 0},
    .trigger = {0, 0, 0},
    .timeBase = {0, 0, 0},
    .cursors = {0, 0, 0},
    .ch1Readout = {64, 64, 64},
    .ch2Readout = {64, 64, 64},
    .timeReadout = {64, 64, 64},
};

constexpr const WaveColors& ColorsOf(bool colorOn) {
  return colorOn ? kOnBlack : kBlackOnWhite;
}

// The pixel at a position in grid units, along either axis. The margin does not scale.
constexpr double PixelAt(double units, double zoom) {
  return units * zoom + kMargin;
}

// Where a wave is drawn: a canvas, a zoom and a set of colours, and the plans of its traces.
struct WaveSurface {
  Canvas& canvas;
  double zoom;
  const WaveColors& colors;
  TracePlans& plans;

  double At(double units) const { return PixelAt(units, zoom); }
  // Draws a text at the nearest pixel.
  void Text(Point at, std::string_view text) const {
    canvas.Text({double(RoundToInt(at.x)), double(RoundToInt(at.y))}, text);
  }
};

}  // namespace oriolemark

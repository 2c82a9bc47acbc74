#include "waveview/DrawGrid.h"

#include <array>
#include <span>
#include <vector>

namespace oriolemark {
namespace {

constexpr const char* kBrand = "TAVIK";
constexpr double kShortTick = 5;         // grid units between short ticks
constexpr double kLongTick = kDivision;  // grid units between long ticks

// A row of single pixels along a frame edge or a middle line. It is `away` * d pixels from the line
// at `line` grid units, where d is the thickness loop's value. It has a pixel every `step` grid
// units.
struct TickRun {
  double line;
  double away;
  double step;
};

// The frame's line is two pixels wide and grows to the left and upward. So the ticks at the right
// and at the bottom are one pixel further from it.
constexpr std::array<TickRun, 8> kTickRows{{
    {0, 1, kShortTick},
    {0, 2, kLongTick},
    {kGridHeight / 2, -1, kShortTick},
    {kGridHeight / 2, -2, kLongTick},
    {kGridHeight / 2, 1, kShortTick},
    {kGridHeight / 2, 2, kLongTick},
    {kGridHeight, -2, kShortTick},
    {kGridHeight, -3, kLongTick},
}};
constexpr std::array<TickRun, 8> kTickColumns{{
    {0, 1, kShortTick},
    {0, 2, kLongTick},
    {kGridWidth / 2, -1, kShortTick},
    {kGridWidth / 2, -2, kLongTick},
    {kGridWidth / 2, 1, kShortTick},
    {kGridWidth / 2, 2, kLongTick},
    {kGridWidth, -2, kShortTick},
    {kGridWidth, -3, kLongTick},
}};

// Number of dots along a length in grid units, with a dot at each end. It does not depend on the
// zoom.
constexpr int DotsAlong(double length, double step) {
  return static_cast<int>(length / step) + 1;
}

void DrawRows(const WaveSurface& surface, std::span<const double> heights, double step) {
  surface.canvas.PixelRows(kMargin, heights, step * surface.zoom, DotsAlong(kGridWidth, step));
}

void DrawColumns(const WaveSurface& surface, std::span<const double> positions, double step) {
  surface.canvas.PixelColumns(positions, kMargin, step * surface.zoom,
                              DotsAlong(kGridHeight, step));
}

void DrawFrame(const WaveSurface& surface) {
  const double right = surface.At(kGridWidth);
  const double bottom = surface.At(kGridHeight);
  const double middleX = surface.At(kGridWidth / 2);
  const double middleY = surface.At(kGridHeight / 2);
  Canvas& canvas = surface.canvas;
  canvas.SetLineWidth(2);
  canvas.Line({kMargin, kMargin}, {right, kMargin});
  canvas.Line({kMargin, kMargin}, {kMargin, bottom});
  canvas.Line({kMargin, bottom}, {right, bottom});
  canvas.Line({right, bottom}, {right, kMargin});
  canvas.SetLineWidth(1);
  canvas.Line({kMargin, middleY}, {right, middleY});
  canvas.Line({middleX, kMargin}, {middleX, bottom});
}

// Where a run of ticks has its layers. The ticks get one layer thicker with each tenth of zoom.
// Below zoom 1 there are none.
std::span<const double> LayersOf(const WaveSurface& surface, const TickRun& run,
                                 std::vector<double>& layers) {
  layers.clear();
  for (int k = 0; (10 + k) / 10.0 <= surface.zoom; ++k) {
    layers.push_back(surface.At(run.line) + run.away * ((10 + k) / 10.0));
  }
  return layers;
}

void DrawTicks(const WaveSurface& surface) {
  std::vector<double> layers;
  for (const TickRun& run : kTickRows) {
    DrawRows(surface, LayersOf(surface, run, layers), run.step);
  }
  for (const TickRun& run : kTickColumns) {
    DrawColumns(surface, LayersOf(surface, run, layers), run.step);
  }
}

void DrawGridDots(const WaveSurface& surface) {
  std::vector<double> lines;
  for (double y = 0; y <= kGridHeight; y += kDivision) lines.push_back(surface.At(y));
  DrawRows(surface, lines, kShortTick);
  lines.clear();
  for (double x = 0; x <= kGridWidth; x += kDivision) lines.push_back(surface.At(x));
  DrawColumns(surface, lines, kShortTick);
}

}  // namespace

void DrawScrGrid(const WaveSurface& surface, GridDots dots) {
  Canvas& canvas = surface.canvas;
  canvas.Clear(surface.colors.background);
  canvas.SetPenStyle(PenStyle::Solid);
  canvas.SetColor(surface.colors.frame);
  DrawFrame(surface);
  DrawTicks(surface);
  if (dots == GridDots::Shown) DrawGridDots(surface);
  canvas.SetColor(surface.colors.brand);
  canvas.SetBold(true);
  surface.Text({kMargin, kTitleLine}, kBrand);
  canvas.SetBold(false);
}

}  // namespace oriolemark

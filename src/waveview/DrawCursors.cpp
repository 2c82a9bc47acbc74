#include "waveview/DrawCursors.h"

#include <array>
#include <cmath>
#include <string>

#include "platform/Rounding.h"
#include "values/StringFunc.h"
#include "waveview/CursorReadout.h"
#include "waveview/DrawTraces.h"

namespace oriolemark {
namespace {

constexpr double kLineInset = 5;  // pixels from the end of a cursor line to the edge of the grid
constexpr double kMark = 5;       // half the width of an end mark, and its height
constexpr double kLeastReadoutZoom = 0.4;

void DrawXCursors(const WaveSurface& surface, const WaveCursors& cursors) {
  Canvas& canvas = surface.canvas;
  const double bottom = surface.At(kGridHeight);
  const std::array<int, 2> positions{RoundToInt(cursors.X1Pos), RoundToInt(cursors.X2Pos)};
  canvas.SetPenStyle(PenStyle::Dotted);
  for (const double x : positions) {
    canvas.Line({x, kMargin + kLineInset}, {x, bottom - kLineInset});
  }
  canvas.SetPenStyle(PenStyle::Solid);
  for (const double x : positions) {
    const std::array<Point, 4> top{
        {{x - kMark, kMargin}, {x + kMark, kMargin}, {x, kMargin + kMark}, {x - kMark, kMargin}}};
    const std::array<Point, 4> foot{
        {{x - kMark, bottom}, {x + kMark, bottom}, {x, bottom - kMark}, {x - kMark, bottom}}};
    canvas.Polyline(top);
    canvas.Polyline(foot);
  }
}

void DrawYCursors(const WaveSurface& surface, const WaveCursors& cursors) {
  Canvas& canvas = surface.canvas;
  const double right = surface.At(kGridWidth);
  const std::array<int, 2> positions{RoundToInt(cursors.Y1Pos), cursors.Y2Pos};
  canvas.SetPenStyle(PenStyle::Dotted);
  for (const double y : positions) {
    canvas.Line({kMargin + kLineInset, y}, {right - kLineInset, y});
  }
  canvas.SetPenStyle(PenStyle::Solid);
  for (const double y : positions) {
    const std::array<Point, 4> left{
        {{kMargin, y - kMark}, {kMargin, y + kMark}, {kMargin + kMark, y}, {kMargin, y - kMark}}};
    const std::array<Point, 4> end{
        {{right, y - kMark}, {right, y + kMark}, {right - kMark, y}, {right, y - kMark}}};
    canvas.Polyline(left);
    canvas.Polyline(end);
  }
}

std::string VoltsText(const std::string& range, double pixels, double zoom) {
  return ConvertVoltToStr(pixels * ConvertStrToVolt(range).value * 8 / 200 / zoom);
}

std::string VoltsLine(const std::string& volts) {
  return volts.empty() ? "" : "|Y1-Y2|  =" + volts;
}

double ReadoutColumn(double zoom) {
  const double base = zoom >= 1.2 ? (5.0 / 6) * kGridWidth * zoom - 50 : kGridWidth * zoom - 120;
  return base + kMargin;
}

}  // namespace

Readouts MakeReadouts(const WaveRecord& record, const WaveCursors& cursors, double zoom) {
  Readouts readouts;
  if (!record.TimeRange.empty()) {
    const double pixels = std::abs(cursors.X2Pos - cursors.X1Pos);
    const std::string time =
        ConvertTimeToStr(pixels * ConvertStrToTime(record.TimeRange).value * 12 / 300 / zoom);
    readouts.time = time;
    // Calculated from the rounded text, so that both lines agree.
    const double shown = GetTimeVlu(time);
    readouts.frequency = shown != 0 ? ConvertFreqToStr(1 / shown) : "???.? Hz";
  }
  const double rows = std::abs(cursors.Y2Pos - cursors.Y1Pos);
  if (!record.CH1Range.empty()) {
    readouts.ch1 = VoltsText(record.CH1Range, rows, zoom);
  }
  if (!record.CH2Range.empty()) {
    readouts.ch2 = VoltsText(record.CH2Range, rows, zoom);
  }
  return readouts;
}

void DrawCursors(const WaveSurface& surface, const WaveRecord& record, WaveCursors& cursors) {
  ClampCursors(cursors, surface.zoom);
  if (!cursors.CursorXOn && !cursors.CursorYOn) return;
  surface.canvas.SetColor(surface.colors.cursors);
  surface.canvas.SetLineWidth(1);
  if (cursors.CursorXOn) DrawXCursors(surface, cursors);
  if (cursors.CursorYOn) DrawYCursors(surface, cursors);
  DisplayCursorM(surface, record, cursors);
}

void DisplayCursorM(const WaveSurface& surface, const WaveRecord& record,
                    const WaveCursors& cursors) {
  if (surface.zoom < kLeastReadoutZoom) return;
  const Readouts readouts = MakeReadouts(record, cursors, surface.zoom);
  const double x = ReadoutColumn(surface.zoom);
  double row = 5;
  Canvas& canvas = surface.canvas;
  canvas.SetBold(true);
  if (cursors.CursorXOn && !record.TimeRange.empty()) {
    canvas.SetColor(surface.colors.timeReadout);
    surface.Text({x, 30}, "1/|X1-X2|=" + readouts.frequency);
    surface.Text({x, 50}, "|X1-X2|   =" + readouts.time);
    row = 45;
  }
  if (!cursors.CursorYOn) return;
  if (ShowsChannel(record, 1)) {
    canvas.SetColor(surface.colors.ch1Readout);
    surface.Text({x, row + 25}, VoltsLine(readouts.ch1));
    row += 20;
  }
  if (ShowsChannel(record, 2)) {
    canvas.SetColor(surface.colors.ch2Readout);
    surface.Text({x, row + 25}, VoltsLine(readouts.ch2));
  }
}

}  // namespace oriolemark

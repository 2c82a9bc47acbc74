#include "waveview/DrawStatus.h"

#include <array>
#include <span>

#include "values/Number.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

// Positions of the texts, in grid units.
constexpr double kCH1Text = 0;
constexpr double kCH2Text = 75;
constexpr double kXYTitle = 110;
constexpr double kTimeBaseText = 150;
constexpr double kDelayText = 200;

constexpr double kCenterX = kGridWidth / 2;
constexpr double kCenterY = kGridHeight / 2;

// An offset reply ends in "div".
constexpr std::size_t kOffsetUnit = 3;

void DrawStatusText(const WaveSurface& surface, double units, const std::string& text) {
  surface.Text({surface.At(units), surface.At(kStatusLine)}, text);
}

double OffsetDivisions(const std::string& offset) {
  if (offset.size() < kOffsetUnit) return 0;
  return LeadingNumber(offset.substr(0, offset.size() - kOffsetUnit));
}

// Figures of a few pixels, the same at every zoom.

// A flag whose tip is at the ground level, five pixels below `top`.
void DrawFlag(Canvas& canvas, double top) {
  const std::array<Point, 6> flag{
      {{6, top}, {18, top}, {23, top + 5}, {18, top + 10}, {6, top + 10}, {6, top}}};
  canvas.Polyline(flag);
}

void DrawCenterMark(Canvas& canvas, double left) {
  const std::array<Point, 4> mark{{{left, 26}, {left + 8, 26}, {left + 4, 30}, {left, 26}}};
  canvas.Polyline(mark);
}

void DrawTriggerTag(const WaveSurface& surface, double left) {
  const std::array<Point, 6> tag{
      {{left, 30}, {left + 8, 30}, {left + 8, 40}, {left + 4, 44}, {left, 40}, {left, 30}}};
  surface.canvas.Polyline(tag);
  surface.canvas.SetBold(false);
  surface.Text({left + 1, 31}, "T");
}

}  // namespace

void DrawXYStatus(const WaveSurface& surface, const std::string& ch1Range,
                  const std::string& ch2Range) {
  Canvas& canvas = surface.canvas;
  canvas.SetBold(true);
  canvas.SetColor(surface.colors.xyDots);
  surface.Text({surface.At(kXYTitle), kTitleLine}, "X-Y Mode");
  canvas.SetColor(surface.colors.ch1);
  DrawStatusText(surface, kCH1Text, "CH1 " + ch1Range);
  canvas.SetColor(surface.colors.ch2);
  DrawStatusText(surface, kCH2Text, "CH2 " + ch2Range);
}

void DrawChannelStatus(const WaveSurface& surface, const std::string& channel,
                       const std::string& offset, const std::string& range) {
  const double ground = kCenterY - kDivision * OffsetDivisions(offset);
  if (!(ground > 0 && ground < kGridHeight)) return;
  Canvas& canvas = surface.canvas;
  const double top = surface.At(ground) - 5;
  DrawFlag(canvas, top);
  canvas.SetBold(false);
  surface.Text({10, top - 1}, channel.substr(channel.size() - 1));
  canvas.SetBold(true);
  DrawStatusText(surface, channel == "CH1" ? kCH1Text : kCH2Text, channel + " " + range);
}

void DrawTimeStatus(const WaveSurface& surface, const std::string& timeBase,
                    const std::string& delay) {
  Canvas& canvas = surface.canvas;
  canvas.SetColor(surface.colors.trigger);
  // With a time base of 0 this is infinite or not a number, so no marks are drawn.
  const double trigger =
      kCenterX - kDivision * ConvertStrToTime(delay).value / ConvertStrToTime(timeBase).value;
  if (trigger > 0 && trigger < kGridWidth) {
    DrawCenterMark(canvas, surface.At(kCenterX) - 4);
    DrawTriggerTag(surface, surface.At(trigger) - 4);
  }
  canvas.SetBold(false);
  DrawStatusText(surface, kDelayText, "Delay:" + delay);
  canvas.SetColor(surface.colors.timeBase);
  canvas.SetBold(true);
  DrawStatusText(surface, kTimeBaseText, timeBase);
}

}  // namespace oriolemark

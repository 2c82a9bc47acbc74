#include "platform/Canvas.h"

#include <algorithm>

namespace oriolemark {

void Canvas::SetSize(int width, int height) {
  width = std::max(0, width);
  height = std::max(0, height);
  SetPart(width, height, {.width = width, .height = height});
}

void Canvas::PixelRow(Point first, double step, int count) {
  for (int k = 0; k < count; ++k) Pixel({first.x + k * step, first.y});
}

void Canvas::PixelColumn(Point first, double step, int count) {
  for (int k = 0; k < count; ++k) Pixel({first.x, first.y + k * step});
}

void Canvas::PixelRows(double x, std::span<const double> heights, double step, int count) {
  for (const double y : heights) PixelRow({x, y}, step, count);
}

void Canvas::PixelColumns(std::span<const double> positions, double y, double step, int count) {
  for (const double x : positions) PixelColumn({x, y}, step, count);
}

void Canvas::Polyline(std::span<const Point> points) {
  for (std::size_t i = 1; i < points.size(); ++i) Line(points[i - 1], points[i]);
}

void Canvas::Trace(const TracePlan& plan, std::size_t first, const TraceRows& trace) {
  if (first > plan.X().size() || trace.rows.size() > plan.X().size() - first) return;
  for (std::size_t i = 1; i < trace.rows.size(); ++i) {
    const std::size_t at = first + i;
    Line({plan.X()[at - 1], trace.At(trace.rows[i - 1])}, {plan.X()[at], trace.At(trace.rows[i])});
  }
}

}  // namespace oriolemark

#include "platform/Canvas.h"

namespace oriolemark {

void Canvas::PixelRow(Point first, double step, int count) {
  for (int k = 0; k < count; ++k) Pixel({first.x + k * step, first.y});
}

void Canvas::PixelColumn(Point first, double step, int count) {
  for (int k = 0; k < count; ++k) Pixel({first.x, first.y + k * step});
}

void Canvas::Polyline(std::span<const Point> points) {
  for (std::size_t i = 1; i < points.size(); ++i) Line(points[i - 1], points[i]);
}

}  // namespace oriolemark

#pragma once

namespace oriolemark {

// Positions and sizes of windows are kept in window units: 1/1440 inch, 15 to a pixel at 96 dpi.
// Canvas coordinates are pixels.
constexpr double kUnitsPerPixel = 15;

constexpr double UnitsToPixels(double units) {
  return units / kUnitsPerPixel;
}
constexpr double PixelsToUnits(double pixels) {
  return pixels * kUnitsPerPixel;
}

struct UnitRect {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  bool operator==(const UnitRect&) const = default;
};

}  // namespace oriolemark

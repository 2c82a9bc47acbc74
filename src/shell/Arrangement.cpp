#include "shell/Arrangement.h"

#include <algorithm>
#include <cmath>

namespace oriolemark {
namespace {

// Distance of a cascaded window from the one before it, to the right and down.
constexpr double kCascadeStep = 390;
constexpr double kCascadeShare = 0.75;
constexpr int kMostInOneRow = 3;

std::vector<UnitRect> Cascade(double width, double height, int count) {
  const UnitRect size{0, 0, width * kCascadeShare, height * kCascadeShare};
  const double left = std::min(width, height) * (1 - kCascadeShare);
  const double room = std::floor(std::max(0.0, left) / kCascadeStep) + 1;
  std::vector<UnitRect> places;
  for (int i = 0; i < count; ++i) {
    const double step = std::fmod(i, room) * kCascadeStep;
    places.push_back({step, step, size.width, size.height});
  }
  return places;
}

// Divides the area into `lines` strips and each strip evenly. The last strips take the remainder.
std::vector<UnitRect> Tiles(double width, double height, int count, int lines) {
  std::vector<UnitRect> places;
  int placed = 0;
  for (int line = 0; line < lines; ++line) {
    const int here = (count - placed) / (lines - line);
    for (int i = 0; i < here; ++i) {
      places.push_back({width * i / here, height * line / lines, width / here, height / lines});
    }
    placed += here;
  }
  return places;
}

std::vector<UnitRect> Turned(std::vector<UnitRect> places) {
  for (UnitRect& place : places) {
    std::swap(place.left, place.top);
    std::swap(place.width, place.height);
  }
  return places;
}

std::vector<UnitRect> Icons(double width, double height, int count, const UnitRect& icon) {
  const int inRow = std::max(1, static_cast<int>(width / std::max(1.0, icon.width)));
  std::vector<UnitRect> places;
  for (int i = 0; i < count; ++i) {
    const double row = std::floor(static_cast<double>(i) / inRow) + 1;
    places.push_back(
        {(i % inRow) * icon.width, height - row * icon.height, icon.width, icon.height});
  }
  return places;
}

}  // namespace

std::vector<UnitRect> ArrangeWindows(Arrangement arrangement, double width, double height,
                                     int count, const UnitRect& icon) {
  const int lines = count <= kMostInOneRow ? count : static_cast<int>(std::floor(std::sqrt(count)));
  switch (arrangement) {
    case Arrangement::Cascade:
      return Cascade(width, height, count);
    case Arrangement::TileHorizontal:
      return Tiles(width, height, count, lines);
    case Arrangement::TileVertical:
      return Turned(Tiles(height, width, count, lines));
    case Arrangement::ArrangeIcons:
      break;
  }
  return Icons(width, height, count, icon);
}

}  // namespace oriolemark

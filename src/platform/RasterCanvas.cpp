#include "platform/RasterCanvas.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/Rounding.h"

namespace oriolemark {
namespace {

// Points within this many pixels are rounded and drawn as they are. A line that reaches further is
// first cut to the area around the picture, so that no product below exceeds 64 bits.
constexpr double kReach = 1 << 28;
// Margin around the picture to which a line is cut. It has room for any pen's width.
constexpr double kSurroundings = 100;
// Length in pixels of the dots of a dotted line and of the gaps between them.
constexpr std::int64_t kDot = 2;
// A text that begins further to the left or above cannot reach the picture.
constexpr double kTextReach = 30000;

constexpr std::uint32_t kOpaque = 0xFF000000U;

constexpr std::uint32_t ToPixel(Color color) {
  return kOpaque | static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

bool InReach(Point at) {
  return std::abs(at.x) <= kReach && std::abs(at.y) <= kReach;
}

// RoundToInt for values in reach. At this size a double has no bits left for a fraction, and its
// low bits are the integer.
int RoundInReach(double value) {
  constexpr double kNoFraction = 3.0 * (std::int64_t{1} << 51);
  return static_cast<std::int32_t>(std::bit_cast<std::int64_t>(value + kNoFraction));
}

bool IsFinite(Point at) {
  return std::isfinite(at.x) && std::isfinite(at.y);
}

struct Part {
  double from = 0;
  double to = 1;
};

// Narrows the part of a line to where its coordinate, `start` + t * `way`, lies within low to high.
// Returns false if nothing remains.
bool Narrow(Part& part, double start, double way, double low, double high) {
  if (way == 0) return start >= low && start <= high;
  double enter = (low - start) / way;
  double leave = (high - start) / way;
  if (enter > leave) std::swap(enter, leave);
  part.from = std::max(part.from, enter);
  part.to = std::min(part.to, leave);
  return part.from <= part.to;
}

// Cuts a line to the surroundings of a picture. Returns false if the line misses them.
bool Cut(Point& from, Point& to, int width, int height) {
  const Point start = from;
  const Point way{to.x - from.x, to.y - from.y};
  Part part;
  if (!Narrow(part, start.x, way.x, -kSurroundings, width + kSurroundings) ||
      !Narrow(part, start.y, way.y, -kSurroundings, height + kSurroundings)) {
    return false;
  }
  from = {start.x + part.from * way.x, start.y + part.from * way.y};
  to = {start.x + part.to * way.x, start.y + part.to * way.y};
  return InReach(from) && InReach(to);
}

struct Steps {
  int first;
  int last;
};

// The steps k, from 0 to count - 1, at which start + k * step can be a pixel from 0 to limit - 1.
Steps StepsInside(double start, double step, int count, int limit) {
  const double toLow = (-1 - start) / step;
  const double toHigh = (limit - start) / step;
  const double last = std::min(count - 1.0, std::ceil(std::max(toLow, toHigh)));
  return {RoundToInt(std::max(0.0, std::floor(std::min(toLow, toHigh)))), RoundToInt(last)};
}

// Calls `put` for each pixel of a run of dots along one axis, from 0 to limit - 1. A pixel may be
// put more than once.
template <typename Put>
void WalkRun(double start, double step, int count, int limit, Put put) {
  if (count <= 0 || !std::isfinite(start) || !std::isfinite(step)) return;
  const double end = start + (count - 1) * step;
  if (std::abs(step) < 1) {
    // Dots closer than a pixel leave no gap.
    const int low = std::max(0, RoundToInt(std::min(start, end)));
    const int high = std::min(limit - 1, RoundToInt(std::max(start, end)));
    for (int at = low; at <= high; ++at) put(at);
    return;
  }
  const Steps steps = StepsInside(start, step, count, limit);
  for (int k = steps.first; k <= steps.last; ++k) {
    const int at = RoundToInt(start + k * step);
    if (at >= 0 && at < limit) put(at);
  }
}

std::int64_t DivideUp(std::int64_t dividend, std::int64_t divisor) {
  return (dividend + divisor - 1) / divisor;
}

struct Rows {
  std::int64_t low;
  std::int64_t high;
};

// The rows of a line's first and last pixel in its column `k`, counted from the line's start. The
// line goes `across` columns to the right and `down` rows up or down.
Rows RowsInColumn(std::int64_t across, std::int64_t down, std::int64_t k) {
  if (down <= across) {
    const std::int64_t row = (2 * k * down + across) / (2 * across);
    return {row, row};
  }
  const std::int64_t low = k == 0 ? 0 : DivideUp((2 * k - 1) * down, 2 * across);
  const std::int64_t high = k == across ? down : DivideUp((2 * k + 1) * down, 2 * across) - 1;
  return {low, high};
}

}  // namespace

void RasterCanvas::SetSize(int width, int height) {
  width_ = std::max(0, width);
  height_ = std::max(0, height);
  const std::size_t count = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
  if (count == pixels_.size()) return;
  // Allocates a new vector, because a shrinking one keeps its memory. Frees the old one first, so
  // that the memory of two pictures is never held at once.
  std::vector<std::uint32_t>().swap(pixels_);
  pixels_ = std::vector<std::uint32_t>(count);
}

void RasterCanvas::Clear(Color background) {
  std::fill(pixels_.begin(), pixels_.end(), ToPixel(background));
}

void RasterCanvas::SetPixels(std::span<const std::uint32_t> colours) {
  if (colours.size() != pixels_.size()) return;
  std::transform(colours.begin(), colours.end(), pixels_.begin(),
                 [](std::uint32_t colour) { return kOpaque | colour; });
}

void RasterCanvas::Put(int x, int y) {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) return;
  pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + x] = ToPixel(color_);
}

void RasterCanvas::Stamp(int x, int y) {
  const int reach = lineWidth_ / 2;
  for (int row = y - reach; row < y - reach + lineWidth_; ++row) {
    for (int column = x - reach; column < x - reach + lineWidth_; ++column) Put(column, row);
  }
}

void RasterCanvas::Pixel(Point at) {
  if (IsFinite(at)) Put(RoundToInt(at.x), RoundToInt(at.y));
}

void RasterCanvas::Line(Point from, Point to) {
  if (!IsFinite(from) || !IsFinite(to)) return;
  if ((!InReach(from) || !InReach(to)) && !Cut(from, to, width_, height_)) return;
  DrawSegment({RoundToInt(from.x), RoundToInt(from.y)}, {RoundToInt(to.x), RoundToInt(to.y)});
}

// Bresenham's line, from its first visible step. Each step moves one pixel along the longer axis.
// The error of the shorter axis is carried along in units of half a step.
void RasterCanvas::DrawSegment(PixelPoint from, PixelPoint to) {
  const std::int64_t wayX = std::int64_t{to.x} - from.x;
  const std::int64_t wayY = std::int64_t{to.y} - from.y;
  const bool steep = std::abs(wayY) > std::abs(wayX);
  const std::int64_t major = std::max(std::abs(wayX), std::abs(wayY));
  const std::int64_t minor = std::min(std::abs(wayX), std::abs(wayY));
  const int signX = wayX < 0 ? -1 : 1;
  const int signY = wayY < 0 ? -1 : 1;

  const int start = steep ? from.y : from.x;
  const int sign = steep ? signY : signX;
  const std::int64_t low = -std::int64_t{lineWidth_};
  const std::int64_t high = std::int64_t{steep ? height_ : width_} + lineWidth_;
  const std::int64_t first = std::max<std::int64_t>(0, sign > 0 ? low - start : start - high);
  const std::int64_t last = std::min(major, sign > 0 ? high - start : start - low);

  const std::int64_t whole = std::max<std::int64_t>(1, 2 * major);
  std::int64_t error = (2 * first * minor + major) % whole;
  std::int64_t aside = (2 * first * minor + major) / whole;
  for (std::int64_t k = first; k <= last; ++k) {
    if (style_ == PenStyle::Solid || k / kDot % 2 == 0) {
      Stamp(static_cast<int>(from.x + signX * (steep ? aside : k)),
            static_cast<int>(from.y + signY * (steep ? k : aside)));
    }
    error += 2 * minor;
    if (error >= whole) {
      error -= whole;
      ++aside;
    }
  }
}

void RasterCanvas::Text(Point at, std::string_view text) {
  if (!textPainter || !(at.x >= -kTextReach && at.x < width_)) return;
  if (!(at.y >= -kTextReach && at.y < height_)) return;
  textPainter(*this, RoundToInt(at.x), RoundToInt(at.y), text, color_, bold_);
}

void RasterCanvas::PixelRow(Point first, double step, int count) {
  if (!IsFinite(first)) return;
  const int y = RoundToInt(first.y);
  if (y < 0 || y >= height_) return;
  WalkRun(first.x, step, count, width_, [this, y](int x) { Put(x, y); });
}

void RasterCanvas::PixelColumn(Point first, double step, int count) {
  if (!IsFinite(first)) return;
  const int x = RoundToInt(first.x);
  if (x < 0 || x >= width_) return;
  WalkRun(first.y, step, count, height_, [this, x](int y) { Put(x, y); });
}

void RasterCanvas::Polyline(std::span<const Point> points) {
  bool plain = lineWidth_ == 1 && style_ == PenStyle::Solid;
  std::vector<PixelPoint> rounded(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    plain &= InReach(points[i]);
    rounded[i] = {RoundInReach(points[i].x), RoundInReach(points[i].y)};
  }
  if (!plain) {
    Canvas::Polyline(points);
  } else if (WorthColumns(rounded)) {
    FillColumns(rounded);
  } else {
    for (std::size_t i = 1; i < rounded.size(); ++i) DrawSegment(rounded[i - 1], rounded[i]);
  }
}

// Below two points a column, single lines are as fast. Points that turn back cannot be filled.
bool RasterCanvas::WorthColumns(const std::vector<PixelPoint>& points) const {
  if (points.size() < 2) return false;
  const std::int64_t columns = std::int64_t{points.back().x} - points.front().x + 1;
  if (static_cast<std::int64_t>(points.size()) < 2 * columns) return false;
  bool turnsBack = false;
  for (std::size_t i = 1; i < points.size(); ++i) turnsBack |= points[i].x < points[i - 1].x;
  return !turnsBack;
}

void RasterCanvas::FillColumn(int x, int low, int high) {
  if (x < 0 || x >= width_) return;
  low = std::max(low, 0);
  high = std::min(high, height_ - 1);
  const std::uint32_t pixel = ToPixel(color_);
  const std::size_t stride = static_cast<std::size_t>(width_);
  std::size_t at = static_cast<std::size_t>(low) * stride + static_cast<std::size_t>(x);
  for (int y = low; y <= high; ++y, at += stride) pixels_[at] = pixel;
}

// Draws a polyline that never turns back. It passes each column once, and its lines in a column
// join end to end. So their pixels form one run of rows, which is filled at once.
void RasterCanvas::FillColumns(const std::vector<PixelPoint>& points) {
  int column = points.front().x;
  int low = points.front().y;
  int high = low;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const PixelPoint from = points[i - 1];
    const PixelPoint to = points[i];
    if (to.x == from.x) {
      // Most lines of a long record stay in their column.
      if (to.x == column) {
        low = std::min(low, to.y);
        high = std::max(high, to.y);
      }
      continue;
    }
    const std::int64_t across = std::int64_t{to.x} - from.x;
    const std::int64_t down = std::abs(std::int64_t{to.y} - from.y);
    const std::int64_t seen = std::max<std::int64_t>(0, -std::int64_t{from.x});
    for (std::int64_t k = seen; from.x + k <= std::min(to.x, width_ - 1); ++k) {
      // With a constant 1 the compiler has nothing to divide.
      const Rows rows = across == 1 ? RowsInColumn(1, down, k) : RowsInColumn(across, down, k);
      const int one = static_cast<int>(to.y < from.y ? from.y - rows.low : from.y + rows.low);
      const int other = static_cast<int>(to.y < from.y ? from.y - rows.high : from.y + rows.high);
      if (const int x = static_cast<int>(from.x + k); x != column) {
        FillColumn(column, low, high);
        column = x;
        low = high = one;
      }
      low = std::min({low, one, other});
      high = std::max({high, one, other});
    }
  }
  FillColumn(column, low, high);
}

std::unique_ptr<Canvas> RasterCanvas::MakeCopy() const {
  return std::make_unique<RasterCanvas>(*this);
}

void RasterCanvas::CopyFrom(const Canvas& other) {
  const auto* raster = dynamic_cast<const RasterCanvas*>(&other);
  if (raster == nullptr || raster == this) return;
  pixels_ = raster->pixels_;
  width_ = raster->width_;
  height_ = raster->height_;
}

}  // namespace oriolemark

#include "platform/RasterCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "platform/Rounding.h"

namespace oriolemark {
namespace {

// Margin around the picture to which a line that reaches too far is cut. It has room for any pen's
// width.
constexpr double kSurroundings = 100;
// Length in pixels of the dots of a dotted line and of the gaps between them.
constexpr std::int64_t kDot = 2;
constexpr int kCacheLine = 16;  // pixels

bool InReach(Point at) {
  return InPixelReach(at.x) && InPixelReach(at.y);
}

struct Stretch {
  double from = 0;
  double to = 1;
};

// Narrows the part of a line to where its coordinate, `start` + t * `way`, lies within low to high.
// Returns false if nothing remains.
bool Narrow(Stretch& part, double start, double way, double low, double high) {
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
  Stretch part;
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

// The steps k, from 0 to count - 1, at which start + k * step can be a pixel from low to high.
Steps StepsInside(double start, double step, int count, int low, int high) {
  const double toLow = (low - 1 - start) / step;
  const double toHigh = (high + 1 - start) / step;
  const double last = std::min(count - 1.0, std::ceil(std::max(toLow, toHigh)));
  return {RoundToInt(std::max(0.0, std::floor(std::min(toLow, toHigh)))), RoundToInt(last)};
}

// Calls `put` for each pixel of a run of dots along one axis, from low to high. A pixel may be put
// more than once, and pixels a few steps outside may be put too.
template <typename Put>
void WalkRun(double start, double step, int count, int low, int high, Put put) {
  if (count <= 0 || !std::isfinite(start) || !std::isfinite(step)) return;
  const double end = start + (count - 1) * step;
  if (std::abs(step) < 1) {
    // Dots closer than a pixel leave no gap.
    const int first = std::max(low, RoundToInt(std::min(start, end)));
    const int last = std::min(high, RoundToInt(std::max(start, end)));
    for (int at = first; at <= last; ++at) put(at);
    return;
  }
  const Steps steps = StepsInside(start, step, count, low, high);
  for (int k = steps.first; k <= steps.last; ++k) {
    if (const double at = start + k * step; InPixelReach(at)) put(RoundInReach(at));
  }
}

// Calls `draw` for each position that is on another pixel than the one before it.
template <typename Draw>
void EachPixelOnce(std::span<const double> positions, Draw draw) {
  const double* before = nullptr;
  for (const double& at : positions) {
    if (before == nullptr || RoundToInt(at) != RoundToInt(*before)) draw(at);
    before = &at;
  }
}

}  // namespace

void RasterCanvas::SetPart(int width, int height, const PixelRect& part) {
  wholeWidth_ = width;
  wholeHeight_ = height;
  left_ = part.left;
  top_ = part.top;
  width_ = part.width;
  height_ = part.height;
  const std::size_t count = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
  overlaid_ = false;
  ground_.reset();
  if (count == pixels_.size()) return;
  // Allocates a new vector, because a shrinking one keeps its memory. Frees the old one first, so
  // that the memory of two pictures is never held at once.
  std::vector<std::uint32_t>().swap(pixels_);
  std::vector<Stroke>().swap(strokes_);
  pixels_ = std::vector<std::uint32_t>(count);
}

void RasterCanvas::Clear(Color background) {
  DropOverlay();
  if (ground_ == background) {
    EraseStrokes(background);
  } else {
    std::fill(pixels_.begin(), pixels_.end(), ToPixel(background));
  }
  ground_ = background;
  strokes_.clear();
  touched_ = 0;
}

void RasterCanvas::EraseStrokes(Color background) {
  ground_.reset();  // so that the erasing is not noted
  const Color color = std::exchange(color_, background);
  for (const auto& [from, to, shape] : strokes_) {
    if (shape == Shape::Line) {
      DrawInside(from, to);
    } else {
      FillRect(from.x, from.y, to.x, to.y);
    }
  }
  color_ = color;
}

void RasterCanvas::Note(PixelPoint from, PixelPoint to, Shape shape) {
  if (!ground_ || overlaid_) return;
  const int wayX = std::abs(to.x - from.x) + 1;
  const int wayY = std::abs(to.y - from.y) + 1;
  // Each row of a rectangle takes a cache line more than its pixels, and so does each pixel of a
  // line.
  const int touched =
      shape == Shape::Line ? std::max(wayX, wayY) * kCacheLine : wayY * (wayX + kCacheLine);
  touched_ += static_cast<std::size_t>(touched);
  if (touched_ > pixels_.size() / 2) {
    ground_.reset();
  } else {
    strokes_.push_back({from, to, shape});
  }
}

void RasterCanvas::SetPixels(std::span<const std::uint32_t> colours) {
  if (colours.size() != pixels_.size()) return;
  overlaid_ = false;
  ground_.reset();
  std::transform(colours.begin(), colours.end(), pixels_.begin(),
                 [](std::uint32_t colour) { return 0xFF000000U | colour; });
}

void RasterCanvas::Put(int x, int y) {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) return;
  std::uint32_t* at = At(x, y);
  if (overlaid_) covered_.push_back({static_cast<std::uint32_t>(at - pixels_.data()), *at});
  Note({x, y}, {x, y}, Shape::Rect);
  *at = ToPixel(color_);
}

void RasterCanvas::Stamp(int x, int y) {
  const int reach = lineWidth_ / 2;
  for (int row = y - reach; row < y - reach + lineWidth_; ++row) {
    for (int column = x - reach; column < x - reach + lineWidth_; ++column) Put(column, row);
  }
}

void RasterCanvas::Pixel(Point at) {
  if (!InReach(at)) return;
  const PixelPoint pixel = Rounded(at);
  Put(pixel.x, pixel.y);
}

void RasterCanvas::Line(Point from, Point to) {
  // A cut line depends on the size of the whole picture and not on the part that is kept.
  if ((!InReach(from) || !InReach(to)) && !Cut(from, to, wholeWidth_, wholeHeight_)) return;
  DrawSegment(Rounded(from), Rounded(to));
}

void RasterCanvas::FillRect(int left, int top, int right, int bottom) {
  left = std::max(left, 0);
  right = std::min(right, width_ - 1);
  top = std::max(top, 0);
  bottom = std::min(bottom, height_ - 1);
  if (left > right || top > bottom) return;
  Note({left, top}, {right, bottom}, Shape::Rect);
  for (int y = top; y <= bottom; ++y) {
    if (overlaid_) {
      for (int x = left; x <= right; ++x) Put(x, y);
    } else {
      std::fill_n(At(left, y), right - left + 1, ToPixel(color_));
    }
  }
}

void RasterCanvas::DrawSegment(PixelPoint from, PixelPoint to) {
  if (style_ != PenStyle::Solid) {
    DrawStamps(from, to);
  } else if (from.x == to.x || from.y == to.y) {
    const int before = lineWidth_ / 2;
    const int after = lineWidth_ - before - 1;
    FillRect(std::min(from.x, to.x) - before, std::min(from.y, to.y) - before,
             std::max(from.x, to.x) + after, std::max(from.y, to.y) + after);
  } else if (lineWidth_ == 1 && !overlaid_ && Holds(from) && Holds(to)) {
    DrawInside(from, to);
  } else {
    DrawStamps(from, to);
  }
}

// The same line as DrawStamps draws, for a thin one that lies within the picture.
void RasterCanvas::DrawInside(PixelPoint from, PixelPoint to) {
  Note(from, to, Shape::Line);
  const int wayX = std::abs(to.x - from.x);
  const int wayY = std::abs(to.y - from.y);
  const std::ptrdiff_t stepX = to.x < from.x ? -1 : 1;
  const std::ptrdiff_t stepY = to.y < from.y ? -std::ptrdiff_t{width_} : width_;
  const bool steep = wayY > wayX;
  const int major = steep ? wayY : wayX;
  const int minor = steep ? wayX : wayY;
  const std::ptrdiff_t along = steep ? stepY : stepX;
  const std::ptrdiff_t aside = steep ? stepX : stepY;
  const std::uint32_t pixel = ToPixel(color_);
  std::uint32_t* at = At(from.x, from.y);
  int error = major;
  for (int k = 0; k <= major; ++k, at += along) {
    *at = pixel;
    error += 2 * minor;
    // Without a branch, because the steps aside follow no rhythm that a processor can learn.
    const int over = error >= 2 * major ? 1 : 0;
    error -= over * 2 * major;
    at += over * aside;
  }
}

// Bresenham's line, from its first visible step. Each step moves one pixel along the longer axis.
// The error of the shorter axis is carried along in units of half a step.
void RasterCanvas::DrawStamps(PixelPoint from, PixelPoint to) {
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
  if (!textShaper || !InReach(at)) return;
  const PixelPoint corner = Rounded(at);
  for (const TextDash& dash : textShaper(text, bold_)) {
    const int x = corner.x + dash.x;
    const int y = corner.y + dash.y;
    FillRect(x, y, x + dash.width - 1, y);
  }
}

void RasterCanvas::PixelRow(Point first, double step, int count) {
  if (!InPixelReach(first.y)) return;
  const int y = RoundInReach(first.y) - top_;
  if (y < 0 || y >= height_) return;
  WalkRun(first.x, step, count, left_, left_ + width_ - 1, [&](int x) { Put(x - left_, y); });
}

void RasterCanvas::PixelColumn(Point first, double step, int count) {
  if (!InPixelReach(first.x)) return;
  const int x = RoundInReach(first.x) - left_;
  if (x < 0 || x >= width_) return;
  WalkRun(first.y, step, count, top_, top_ + height_ - 1, [&](int y) { Put(x, y - top_); });
}

void RasterCanvas::PixelRows(double x, std::span<const double> heights, double step, int count) {
  EachPixelOnce(heights, [&](double y) { PixelRow({x, y}, step, count); });
}

void RasterCanvas::PixelColumns(std::span<const double> positions, double y, double step,
                                int count) {
  EachPixelOnce(positions, [&](double x) { PixelColumn({x, y}, step, count); });
}

std::unique_ptr<Canvas> RasterCanvas::MakeCopy() const {
  return std::make_unique<RasterCanvas>(*this);
}

void RasterCanvas::BeginOverlay() {
  if (overlaid_) ground_.reset();
  overlaid_ = true;
  covered_.clear();
}

bool RasterCanvas::DropOverlay() {
  if (!overlaid_) return false;
  overlaid_ = false;
  for (auto last = covered_.rbegin(); last != covered_.rend(); ++last)
    pixels_[last->at] = last->pixel;
  return true;
}

}  // namespace oriolemark

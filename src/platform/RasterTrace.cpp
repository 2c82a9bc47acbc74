// How a raster draws traces. A trace never turns back. So its lines in a column of pixels join end
// to end, and they cover one run of rows without a gap.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>

#include "platform/RasterCanvas.h"
#include "platform/Rounding.h"

namespace oriolemark {
namespace {

constexpr int kTile = 32;  // columns that are filled together, two cache lines a row
// Pixels of a tile that are worth a masked row.
constexpr int kWorthMask = 4;

std::int64_t DivideUp(std::int64_t dividend, std::int64_t divisor) {
  return (dividend + divisor - 1) / divisor;
}

struct Steps {
  std::int64_t low;
  std::int64_t high;
};

// The rows of a line's first and last pixel in its column `k`, counted from the line's start. The
// line goes `across` columns to the right and `down` rows up or down.
Steps RowsInColumn(std::int64_t across, std::int64_t down, std::int64_t k) {
  if (down <= across) {
    const std::int64_t row = (2 * k * down + across) / (2 * across);
    return {row, row};
  }
  const std::int64_t low = k == 0 ? 0 : DivideUp((2 * k - 1) * down, 2 * across);
  const std::int64_t high = k == across ? down : DivideUp((2 * k + 1) * down, 2 * across) - 1;
  return {low, high};
}

// The column of a trace's first point, or the last one that lies further left than `left`.
std::size_t FirstShown(std::span<const TracePlan::Column> columns, std::size_t first, int left) {
  const auto next = std::partition_point(columns.begin(), columns.end(), [&](const auto& column) {
    return column.first <= first || column.x < left;
  });
  return next == columns.begin() ? 0 : static_cast<std::size_t>(next - columns.begin()) - 1;
}

std::pair<std::int32_t, std::int32_t> LeastAndMost(std::span<const std::int32_t> rows) {
  std::int32_t least = rows.front();
  std::int32_t most = least;
  for (const std::int32_t row : rows) {
    least = std::min(least, row);
    most = std::max(most, row);
  }
  return {least, most};
}

}  // namespace

void RasterCanvas::Trace(const TracePlan& plan, std::size_t first, const TraceRows& trace) {
  if (first > plan.X().size() || trace.rows.size() > plan.X().size() - first) return;
  if (trace.rows.size() < 2) return;
  if (lineWidth_ != 1 || style_ != PenStyle::Solid || overlaid_) {
    Canvas::Trace(plan, first, trace);
  } else if (plan.Columns().empty() || !CollectRuns(plan, first, trace)) {
    DrawThinTrace(plan, first, trace);
  } else {
    FillRuns();
  }
}

// Draws the lines that can reach the picture one by one.
void RasterCanvas::DrawThinTrace(const TracePlan& plan, std::size_t first, const TraceRows& trace) {
  const std::span<const double> x = plan.X().subspan(first, trace.rows.size());
  const auto begin = std::lower_bound(x.begin(), x.end(), left_ - 1.0);
  const auto end = std::upper_bound(begin, x.end(), double(left_) + width_);
  const auto from = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, begin - x.begin() - 1));
  const auto to = std::min(x.size(), static_cast<std::size_t>(end - x.begin()) + 1);
  Canvas::Trace(plan, first + from,
                {trace.rows.subspan(from, to - from), trace.scale, trace.origin});
}

void RasterCanvas::ExtendRun(int x, int one, int other) {
  if (x < 0 || x >= width_) return;
  Run& run = runs_[static_cast<std::size_t>(x)];
  run = {std::min({run.low, one, other}), std::max({run.high, one, other})};
}

// Adds the line between the last point of a column and the first of the next column with points.
void RasterCanvas::JoinRuns(PixelPoint from, PixelPoint to) {
  const std::int64_t across = std::int64_t{to.x} - from.x;
  const std::int64_t down = std::abs(std::int64_t{to.y} - from.y);
  const int sign = to.y < from.y ? -1 : 1;
  if (across == 1) {
    // The nearer half belongs to each column; below two rows there is nothing between the points.
    if (down < 2) return;
    const int half = static_cast<int>((down + 1) / 2);
    ExtendRun(from.x, from.y, from.y + sign * (half - 1));
    ExtendRun(to.x, from.y + sign * half, to.y);
    return;
  }
  const std::int64_t last = std::min<std::int64_t>(across, std::int64_t{width_} - 1 - from.x);
  for (std::int64_t k = std::max<std::int64_t>(0, -std::int64_t{from.x}); k <= last; ++k) {
    const Steps steps = RowsInColumn(across, down, k);
    ExtendRun(static_cast<int>(from.x + k), static_cast<int>(from.y + sign * steps.low),
              static_cast<int>(from.y + sign * steps.high));
  }
}

// Finds the run of each column that shows. Returns false if a row is too far away for that.
bool RasterCanvas::CollectRuns(const TracePlan& plan, std::size_t first, const TraceRows& trace) {
  runs_.assign(static_cast<std::size_t>(width_), {height_, -1});
  const std::span<const TracePlan::Column> columns = plan.Columns();
  const std::size_t end = first + trace.rows.size();
  std::optional<PixelPoint> before;
  for (std::size_t i = FirstShown(columns, first, left_); i < columns.size(); ++i) {
    const std::size_t from = std::max(first, columns[i].first);
    const std::size_t to = std::min(end, plan.EndOf(i));
    if (from >= to) break;
    const auto rows = trace.rows.subspan(from - first, to - from);
    const auto [least, most] = LeastAndMost(rows);
    if (!InPixelReach(trace.At(least)) || !InPixelReach(trace.At(most))) return false;
    const int x = columns[i].x - left_;
    const auto shown = [&](std::int32_t row) { return RoundInReach(trace.At(row)) - top_; };
    ExtendRun(x, shown(least), shown(most));
    if (before) JoinRuns(*before, {x, shown(rows.front())});
    before = PixelPoint{x, shown(rows.back())};
    if (x >= width_) break;
  }
  return true;
}

// Fills the runs. Low ones are filled pixel by pixel, tall ones as tiles.
void RasterCanvas::FillRuns() {
  for (Run& run : runs_) run = {std::max(run.low, 0), std::min(run.high, height_ - 1)};
  for (int x = 0; x < width_; x += kTile) {
    const Run* runs = runs_.data() + x;
    const int columns = std::min(kTile, width_ - x);
    Run inner{0, height_ - 1};
    Run outer{height_, -1};
    int pixels = 0;
    for (int i = 0; i < columns; ++i) {
      pixels += std::max(0, runs[i].high - runs[i].low + 1);
      inner = {std::max(inner.low, runs[i].low), std::min(inner.high, runs[i].high)};
      outer = {std::min(outer.low, runs[i].low), std::max(outer.high, runs[i].high)};
    }
    if (columns == kTile && pixels > kWorthMask * (outer.high - outer.low + 1)) {
      FillTile(x, runs, inner, outer);
    } else {
      for (int i = 0; i < columns; ++i) FillRect(x + i, runs[i].low, x + i, runs[i].high);
    }
  }
}

// Fills the runs of one tile. All of them cover the rows of `inner`, some those of `outer`.
void RasterCanvas::FillTile(int x, const Run* runs, Run inner, Run outer) {
  const std::uint32_t pixel = ToPixel(color_);
  // Apart from each other, so that one comparison serves several columns.
  std::array<int, kTile> low;
  std::array<int, kTile> high;
  for (int i = 0; i < kTile; ++i) {
    low[i] = runs[i].low;
    high[i] = runs[i].high;
  }
  const auto fillMasked = [&](int y) {
    std::uint32_t* row = At(x, y);
    for (int i = 0; i < kTile; ++i) row[i] = (y >= low[i]) & (y <= high[i]) ? pixel : row[i];
  };
  if (outer.low > outer.high) return;
  Note({x, outer.low}, {x + kTile - 1, outer.high}, Shape::Rect);
  if (inner.low > inner.high) inner = {outer.high + 1, outer.high};
  for (int y = outer.low; y < inner.low; ++y) fillMasked(y);
  for (int y = inner.low; y <= inner.high; ++y) std::fill_n(At(x, y), kTile, pixel);
  for (int y = inner.high + 1; y <= outer.high; ++y) fillMasked(y);
}

}  // namespace oriolemark

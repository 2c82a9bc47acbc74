#include "simulator/Edges.h"

#include <algorithm>
#include <cmath>

namespace tx5000 {
namespace {

constexpr double kNear = 0.3;  // this share of the way from a level still belongs to it
constexpr double kStart = 0.1;
constexpr double kEnd = 0.9;
// Rows this near to a level, as a share of the way, help to find when the level is passed. The edge
// of a sine is straight around its middle and bent towards its ends.
constexpr double kMiddleBand = 0.2;
constexpr double kEndBand = 0.04;

// The trace around one edge as shares of the way: 0 is the level it leaves, 1 the one it reaches.
class Slope {
 public:
  Slope(const std::vector<double>& heights, double from, double to)
      : heights_(heights), from_(from), way_(to - from) {}

  double ShareAt(int index) const {
    return (heights_[static_cast<std::size_t>(index)] - from_) / way_;
  }

  // When the share is passed between two samples. A straight line through all samples near it
  // evens out rows and noise; a steep edge has too few of them.
  double Passes(double share, double band, int first, int last) const {
    double count = 0;
    double shares = 0;
    double times = 0;
    double squares = 0;
    double products = 0;
    for (int i = first; i <= last; ++i) {
      const double off = ShareAt(i) - share;
      if (std::fabs(off) > band) continue;
      const double time = i - first;
      count += 1;
      shares += off;
      times += time;
      squares += off * off;
      products += off * time;
    }
    const double spread = count * squares - shares * shares;
    if (spread < 1e-9 * count * count || count == 0) return PassesBetween(share, first, last);
    const double slope = (count * products - shares * times) / spread;
    return std::clamp(first + (times - slope * shares) / count, double(first), double(last));
  }

 private:
  double PassesBetween(double share, int first, int last) const {
    int i = first + 1;
    while (i < last && ShareAt(i) < share) ++i;
    const double before = ShareAt(i - 1);
    const double step = ShareAt(i) - before;
    return i - 1 + (step > 0 ? std::clamp((share - before) / step, 0.0, 1.0) : 0.5);
  }

  const std::vector<double>& heights_;
  double from_;
  double way_;
};

// `left` is the last sample near the old level and `reached` the first one near the new level. The
// search for both ends stops at `from` and at the end of the trace.
Edge MakeEdge(const Slope& slope, bool rising, int from, int left, int reached, int count) {
  Edge edge{rising, slope.Passes(0.5, kMiddleBand, left, reached), std::nullopt};
  int first = left;
  while (first > from && slope.ShareAt(first) > kStart - kEndBand) --first;
  int last = reached;
  while (last < count - 1 && slope.ShareAt(last) < kEnd + kEndBand &&
         slope.ShareAt(last) > 1 - 2 * kNear) {
    ++last;
  }
  if (slope.ShareAt(first) <= kStart && slope.ShareAt(last) >= kEnd) {
    edge.duration =
        slope.Passes(kEnd, kEndBand, first, last) - slope.Passes(kStart, kEndBand, first, last);
  }
  return edge;
}

}  // namespace

std::vector<Edge> FindEdges(const std::vector<double>& heights, double base, double top) {
  std::vector<Edge> edges;
  const Slope up(heights, base, top);
  const Slope down(heights, top, base);
  const int count = static_cast<int>(heights.size());
  enum { kUnknown, kLow, kHigh } level = kUnknown;
  int left = 0;  // last sample near the present level
  int from = 0;  // first sample of the present level
  for (int i = 0; i < count; ++i) {
    const double share = up.ShareAt(i);
    if (share > kNear && share < 1 - kNear) continue;
    const auto reached = share <= kNear ? kLow : kHigh;
    if (level != kUnknown && reached != level) {
      const bool rising = reached == kHigh;
      edges.push_back(MakeEdge(rising ? up : down, rising, from, left, i, count));
    }
    if (reached != level) from = i;
    level = reached;
    left = i;
  }
  return edges;
}

}  // namespace tx5000

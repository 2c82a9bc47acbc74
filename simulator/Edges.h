#pragma once

#include <optional>
#include <vector>

namespace tx5000 {

// One passage of a trace between its two levels. Times are in samples, from the left edge on.
struct Edge {
  bool rising = false;
  double middle = 0;               // when it passes the middle of the levels
  std::optional<double> duration;  // from 10 % to 90 %, if both are on the screen
};

// The edges of a trace in the order of time, so that rising and falling ones alternate. Heights are
// rows, upwards, of equal distance in time. `top` must be above `base`. A swing counts only if it
// comes near both levels, so noise around the middle makes no edges.
std::vector<Edge> FindEdges(const std::vector<double>& heights, double base, double top);

}  // namespace tx5000

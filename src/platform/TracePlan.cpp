#include "platform/TracePlan.h"

#include <cmath>
#include <utility>

#include "platform/Rounding.h"

namespace oriolemark {
namespace {

constexpr double kPointsAColumn = 2;

}  // namespace

TracePlan::TracePlan(std::vector<double> x) : x_(std::move(x)) {
  if (x_.empty() || !InPixelReach(x_.front()) || !InPixelReach(x_.back())) return;
  const int columns = RoundToInt(x_.back()) - RoundToInt(x_.front()) + 1;
  if (static_cast<double>(x_.size()) < kPointsAColumn * columns) return;
  for (std::size_t i = 0; i < x_.size(); ++i) {
    const int at = RoundInReach(x_[i]);
    if (columns_.empty() || columns_.back().x != at) columns_.push_back({at, i});
  }
}

}  // namespace oriolemark

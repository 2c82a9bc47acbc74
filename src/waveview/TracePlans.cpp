#include "waveview/TracePlans.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "datasheet/records/WaveRecord.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {
namespace {

constexpr int kFirstWalked = 3;  // the sample of step 0

// Number of steps that reach no further than the right edge and the end of the samples.
int StepsOf(int count) {
  if (count <= 0) return 0;
  const double steps = (kGridWidth - 1) * count / kGridWidth;
  return static_cast<int>(std::min(steps, double{kLastSample - kFirstWalked})) + 1;
}

TracePlan MakePlan(int count, double zoom) {
  std::vector<double> x{PixelAt(0, zoom), PixelAt(1, zoom)};
  const int steps = StepsOf(count);
  x.reserve(x.size() + static_cast<std::size_t>(steps));
  for (int k = 0; k < steps; ++k) x.push_back(PixelAt(TracePlans::StepUnits(k, count), zoom));
  return TracePlan(std::move(x));
}

}  // namespace

double TracePlans::StepUnits(int k, int count) {
  return 1 + k * kGridWidth / count;
}

const TracePlan& TracePlans::For(int count, double zoom) {
  const auto isMeant = [&](const Kept& kept) { return kept.count == count && kept.zoom == zoom; };
  if (isMeant(kept_[0])) return kept_[0].plan;
  std::swap(kept_[0], kept_[1]);
  if (!isMeant(kept_[0])) kept_[0] = {count, zoom, MakePlan(count, zoom)};
  return kept_[0].plan;
}

}  // namespace oriolemark

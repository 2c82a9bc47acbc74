#pragma once

#include <array>

#include "platform/TracePlan.h"

namespace oriolemark {

// The plans of the traces of one view, kept from one repaint to the next.
//
// Point 0 lies at the left edge, point 1 one grid unit further right, whatever the count. The walk
// begins at point 2, which lies where point 1 does; each later point is 300 / count units further
// right. Positions are compared before the zoom, so that the number of points does not depend on
// it.
class TracePlans {
 public:
  // The plan of a trace with so many samples in the grid's width. A count of 0 or less has only the
  // first two points. The plan is valid until another one is asked for.
  const TracePlan& For(int count, double zoom);

  // Position of step k of the walk in grid units, for a count above 0.
  static double StepUnits(int k, int count);

 private:
  struct Kept {
    int count = 0;
    double zoom = 0;
    TracePlan plan;
  };
  // Most records need one plan, those with a spectrum two.
  std::array<Kept, 2> kept_;
};

}  // namespace oriolemark

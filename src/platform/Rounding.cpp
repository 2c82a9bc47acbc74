#include "platform/Rounding.h"

#include <cmath>
#include <limits>

namespace oriolemark {

int RoundToInt(double value) {
  if (std::isnan(value)) return 0;
  if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
  if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
  return static_cast<int>(std::nearbyint(value));
}

}  // namespace oriolemark

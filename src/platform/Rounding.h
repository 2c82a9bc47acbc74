#pragma once

namespace oriolemark {

// Rounds to the nearest integer, ties to even. A value outside the range of int gives the nearest
// end of that range. NaN gives 0.
int RoundToInt(double value);

}  // namespace oriolemark

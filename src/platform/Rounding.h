#pragma once

namespace oriolemark {

// To the nearest integer, ties to even. Values outside the range of int stop at its ends; what is
// not a number is 0.
int RoundToInt(double value);

}  // namespace oriolemark

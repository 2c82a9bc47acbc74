#pragma once

#include <string>

namespace oriolemark {

// Writes cursor distances as texts, and reads them back.

// In millivolts below 1 V, otherwise in volts, with one decimal.
std::string ConvertVoltToStr(double volts);
// In the unit from picoseconds to seconds that fits, with two decimals. Empty below a picosecond,
// except that 0 gives "0.000s".
std::string ConvertTimeToStr(double seconds);
// In the unit from hertz to gigahertz that fits, with two decimals.
std::string ConvertFreqToStr(double hertz);
// Returns the seconds in such a time text, or 0 for any other text.
double GetTimeVlu(const std::string& text);

}  // namespace oriolemark

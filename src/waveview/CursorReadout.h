#pragma once

#include <string>

namespace oriolemark {

// Cursor distances as texts, and back.

// Millivolts below 1 V, volts from there, one decimal.
std::string ConvertVoltToStr(double volts);
// From picoseconds to seconds, two decimals; empty below a picosecond, for 0 apart: "0.000s".
std::string ConvertTimeToStr(double seconds);
// From hertz to gigahertz, two decimals.
std::string ConvertFreqToStr(double hertz);
// The seconds that such a time text shows; 0 for what is none.
double GetTimeVlu(const std::string& text);

}  // namespace oriolemark

#include "waveview/CursorReadout.h"

#include <array>

#include "values/Number.h"

namespace oriolemark {
namespace {

struct TimeUnit {
  double least;   // seconds from which the unit is used
  double factor;  // units in a second
  const char* unit;
};
constexpr std::array<TimeUnit, 5> kTimeUnitRows{{
    {1, 1, "s"},
    {0.001, 1000, "ms"},
    {1E-06, 1E+06, "us"},
    {1E-09, 1E+09, "ns"},
    {1E-12, 1E+12, "ps"},
}};

struct FreqUnit {
  double least;    // hertz from which the unit is used
  double divisor;  // hertz in the unit
  const char* unit;
};
constexpr std::array<FreqUnit, 3> kFreqUnitRows{{
    {1E+09, 1E+09, "GHz"},
    {1E+06, 1E+06, "MHz"},
    {1000, 1000, "KHz"},
}};

}  // namespace

std::string ConvertVoltToStr(double volts) {
  if (volts < 1.0) return FormatFixed(volts * 1000, 1, 1) + "mV";
  return FormatFixed(volts, 1, 1) + "V";
}

std::string ConvertTimeToStr(double seconds) {
  for (const TimeUnit& row : kTimeUnitRows) {
    if (seconds >= row.least) return FormatFixed(seconds * row.factor, 2, 2) + row.unit;
  }
  return seconds == 0 ? "0.000s" : "";
}

std::string ConvertFreqToStr(double hertz) {
  for (const FreqUnit& row : kFreqUnitRows) {
    if (hertz >= row.least) return FormatFixed(hertz / row.divisor, 2, 2) + row.unit;
  }
  return FormatFixed(hertz, 2, 2) + "Hz";
}

double GetTimeVlu(const std::string& text) {
  if (text.size() < 2) return 0;
  const char prefix = text[text.size() - 2];
  const double number = LeadingNumber(text.substr(0, text.size() - 2));
  switch (prefix) {
    case 'n':
      return number / 1E+09;
    case 'u':
      return number / 1E+06;
    case 'm':
      return number / 1000;
    case 'p':
      return number / 1E+12;
    default:
      break;
  }
  if (prefix < '0' || prefix > '9') return 0;
  return LeadingNumber(text.substr(0, text.size() - 1));
}

}  // namespace oriolemark

#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace oriolemark {

// Engineering text ("2.000mV", "500us", "25.0%") to numbers in base units (volts, seconds, hertz,
// fractions) and back. All operations are pure; none raises an error.

// Outcome of a conversion: the number, or 0 and not valid where the text was refused.
struct Converted {
  double value = 0;
  bool ConvertValid = false;
};

// Refused are texts with "<", ">" or "*" (marks for values out of range), texts without the unit,
// and a character in front of the unit that is neither a prefix nor a digit. Blanks do not count.
Converted ConvertStrToFreq(std::string_view text);     // "1.00kHz" is 1000
Converted ConvertStrToTime(std::string_view text);     // "500us" is 0.0005
Converted ConvertStrToVolt(std::string_view text);     // "2.000mV" is 0.002
Converted ConvertStrToPercent(std::string_view text);  // "25.0%" is 0.25

// "500us" to "500.000E-6", the exponent form that the instrument accepts. Empty on refusal.
std::string ConvertTimeStrToExp(std::string_view text);

// The last two characters as upper-case hexadecimal, 0 to 255. Nothing is diagnosed: an unknown low
// digit counts as 0, an unknown high digit as the low one. Empty gives 0, one character its value.
int ConvertHexByteToNum(std::string_view text);

std::string RemoveSpaces(std::string_view text);

// What a limit's text box shows, and the entry of its unit list.
struct UnitBoxText {
  std::string text;
  int index = 0;
};

// Shown in place of a number outside the range of the units.
inline constexpr const char kOutOfRangeText[] = "???.?";

// The unit lists, in the order that the indexes below mean.
inline constexpr std::array<const char*, 5> kVoltUnits{"MV", "kV", "V", "mV", "uV"};
inline constexpr std::array<const char*, 5> kFreqUnits{"GHz", "MHz", "kHz", "Hz", "mHz"};
inline constexpr std::array<const char*, 5> kTimeUnits{"ps", "ns", "us", "ms", "s"};
inline constexpr std::array<const char*, 1> kPercentUnits{"%"};

UnitBoxText SetVoltToUnitBox(double volts);
UnitBoxText SetFreqToUnitBox(double hertz);
UnitBoxText SetTimeToUnitBox(double seconds);
UnitBoxText SetPercentToUnitBox(double fraction);

// A time as the instrument accepts it: one decimal at least, in "ns", "us", "ms" or "s". Negative
// times are always in "ns".
std::string ConvertTimeToUnitStr(double seconds);

// A trigger delay, first limited to what the instrument takes at its time base, which is asked for:
// `ask` sends a query and gives the reply, empty where there is none.
using AskFunction = std::function<std::string(std::string_view command)>;
std::string ConvertTrigOffsetToStr(double seconds, const AskFunction& ask);

// 1234.5 to "1.23E+03". Exponents reach from -5 to 5: below they are 0, above the mantissa grows.
std::string ConvertNumToExp2(double value);
// 1234.5 to "1.2345E+03". Exponents reach from -10 to 5.
std::string ConvertNumToExp4(double value);

}  // namespace oriolemark

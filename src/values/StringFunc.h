#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace oriolemark {

// Converts engineering text ("2.000mV", "500us", "25.0%") to numbers in base units (volts, seconds,
// hertz, fractions) and back. All operations are pure. None raises an error.

// The result of a conversion. If the text was refused, the value is 0 and not valid.
struct Converted {
  double value = 0;
  bool ConvertValid = false;
};

// Texts with "<", ">" or "*" (marks for values out of range) are refused. So are texts without the
// unit, and texts with a character in front of the unit that is neither a prefix nor a digit.
// Blanks are ignored.
Converted ConvertStrToFreq(std::string_view text);     // "1.00kHz" is 1000
Converted ConvertStrToTime(std::string_view text);     // "500us" is 0.0005
Converted ConvertStrToVolt(std::string_view text);     // "2.000mV" is 0.002
Converted ConvertStrToPercent(std::string_view text);  // "25.0%" is 0.25

// Turns "500us" into "500.000E-6", the exponent form that the instrument accepts. Returns an empty
// text if the text is refused.
std::string ConvertTimeStrToExp(std::string_view text);

// Reads the last two characters as upper-case hexadecimal, 0 to 255. Reports no errors: an unknown
// low digit counts as 0, an unknown high digit as the low one. An empty text gives 0, a single
// character its own value.
int ConvertHexByteToNum(std::string_view text);

// The length of a sample as the instrument writes it: "0x7D" and a blank.
inline constexpr std::size_t kPlainToken = 5;
// Converts the samples at the front of `text` that have exactly this form, no more than there are
// values. Returns their number. It is much faster than one call a sample.
std::size_t ConvertPlainTokens(std::string_view text, std::span<std::int32_t> values);

std::string RemoveSpaces(std::string_view text);

// The text in a limit's text box, and the index of its unit in the unit list.
struct UnitBoxText {
  std::string text;
  int index = 0;
};

// Shown instead of a number outside the range of the units.
inline constexpr const char kOutOfRangeText[] = "???.?";

// The unit lists. `UnitBoxText::index` counts their entries.
inline constexpr std::array<const char*, 5> kVoltUnits{"MV", "kV", "V", "mV", "uV"};
inline constexpr std::array<const char*, 5> kFreqUnits{"GHz", "MHz", "kHz", "Hz", "mHz"};
inline constexpr std::array<const char*, 5> kTimeUnits{"ps", "ns", "us", "ms", "s"};
inline constexpr std::array<const char*, 1> kPercentUnits{"%"};

UnitBoxText SetVoltToUnitBox(double volts);
UnitBoxText SetFreqToUnitBox(double hertz);
UnitBoxText SetTimeToUnitBox(double seconds);
UnitBoxText SetPercentToUnitBox(double fraction);

// Writes a time as the instrument accepts it: at least one decimal, in "ns", "us", "ms" or "s".
// Negative times are always in "ns".
std::string ConvertTimeToUnitStr(double seconds);

// Writes a trigger delay, limited to what the instrument accepts at its present time base. `ask`
// sends the query for the time base and returns the reply, which is empty if there is none.
using AskFunction = std::function<std::string(std::string_view command)>;
std::string ConvertTrigOffsetToStr(double seconds, const AskFunction& ask);

// Writes 1234.5 as "1.23E+03". Exponents range from -5 to 5: below that they are 0, above it the
// mantissa grows.
std::string ConvertNumToExp2(double value);
// Writes 1234.5 as "1.2345E+03". Exponents range from -10 to 5.
std::string ConvertNumToExp4(double value);

}  // namespace oriolemark

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Reads and writes quantities in the instrument's own form. Nothing here depends on a locale, and
// everything is exact: a superfluous blank, sign or leading zero makes a text invalid.
namespace tx5000 {

// Decimal digits without sign or leading zero. Returns nothing for any other text or above a
// billion.
std::optional<int> ParseCount(std::string_view text);

// "1.00V", "20.0mV", "5kV" to volts. Returns nothing for a text of another form.
std::optional<double> ParseVolts(std::string_view text);

// Seconds from a sign, digits with at most one point, and "ns", "us", "ms" or "s".
std::optional<double> ParseSeconds(std::string_view text);

// So many significant digits, three or more, and the unit that leaves one to three of them before
// the point: "-140.0us", "1.000kHz". Zero seconds are "0.0000s".
std::string FormatSeconds(double seconds, int digits = 4);
std::string FormatVolts(double volts, int digits);    // mV, V, kV
std::string FormatHertz(double hertz, int digits);    // mHz to GHz
std::string FormatNumber(double number, int digits);  // without a unit

// Positions in hundredths of a division: 304 is "3.04div". Only multiples of 4 within 12 divisions
// are valid. Any other text, also "-0.00div", gives nothing.
std::optional<int> ParseDivisions(std::string_view text);
std::string FormatDivisions(int hundredths);

// The nearest valid position.
int NearestPosition(double divisions);

// A plain decimal number with an optional sign and exponent and nothing around it.
std::optional<double> ParseNumber(std::string_view text);

}  // namespace tx5000

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The texts in which the instrument gives and takes quantities. Nothing here depends on a locale,
// and everything is exact: a blank, a sign or a leading zero too many makes a text a wrong one.
namespace tx5000 {

// Decimal digits without sign or leading zero; nothing for any other text or above a billion.
std::optional<int> ParseCount(std::string_view text);

// "1.00V", "20.0mV", "5kV" to volts. Nothing for a text of another form.
std::optional<double> ParseVolts(std::string_view text);

// Sign, digits with at most one point, then "ns", "us", "ms" or "s", to seconds.
std::optional<double> ParseSeconds(std::string_view text);

// Four significant digits and the unit that leaves one to three digits before the point:
// "-140.0us". Zero is "0.0000s".
std::string FormatSeconds(double seconds);

// Positions in hundredths of a division: 304 is "3.04div". Only multiples of 4 within 12 divisions
// exist; any other text, "-0.00div" too, gives nothing.
std::optional<int> ParseDivisions(std::string_view text);
std::string FormatDivisions(int hundredths);

// The nearest position that exists.
int NearestPosition(double divisions);

// Plain decimal number with an optional sign and exponent, nothing around it.
std::optional<double> ParseNumber(std::string_view text);

}  // namespace tx5000

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oriolemark {

// Numbers in text, always with "." as the decimal mark, whatever the desktop's locale.

// Returns the longest leading part that is a number (optional blanks, sign, digits with at most one
// point, optional exponent). Returns 0 if there is none. Never fails.
double LeadingNumber(std::string_view text);

// Whether the whole text is a number; blanks around it are allowed. "1." and ".5" are numbers. An
// empty text, "inf", "nan", hexadecimal and thousands marks are not.
bool IsNumeric(std::string_view text);

// Returns the number if the whole text is one, otherwise nothing. For replies that must be numbers:
// the caller then keeps its old value.
std::optional<double> NumberInReply(std::string_view text);
// The same, rounded to the nearest whole number, ties to even. Returns nothing if that is outside
// `lowest` to `highest`.
std::optional<int> WholeNumberInReply(std::string_view text, int lowest, int highest);

// Writes the number in decimal, with at most 15 significant digits.
std::string NumberText(double value);

// Writes the number's 15 significant digits with `minimum` to `maximum` decimals and at least one
// digit before the point. Rounds ties away from zero. A text of zeros has no minus sign.
std::string FormatFixed(double value, int minimum, int maximum);

}  // namespace oriolemark

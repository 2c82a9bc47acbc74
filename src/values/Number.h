#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oriolemark {

// Numbers in text, always with "." as the decimal mark, whatever the desktop's locale.

// The longest leading part that is a number (optional blanks, sign, digits with at most one point,
// optional exponent). No such part gives 0; it never fails.
double LeadingNumber(std::string_view text);

// Whether the whole text is a number, blanks around it allowed. "1." and ".5" are; an empty text,
// "inf", "nan", hexadecimal and thousands marks are not.
bool IsNumeric(std::string_view text);

// The number that the whole text is; nothing where it is none. For replies that must be numbers:
// the caller keeps its old value.
std::optional<double> NumberInReply(std::string_view text);
// The same, rounded to the nearest whole number, ties to even; nothing where it is outside
// `lowest` to `highest`.
std::optional<int> WholeNumberInReply(std::string_view text, int lowest, int highest);

// The number in decimal, with at most 15 significant digits.
std::string NumberText(double value);

// The number's 15 significant digits with `minimum` to `maximum` decimals and at least one digit
// before the point, ties away from zero. A text of zeros has no minus sign.
std::string FormatFixed(double value, int minimum, int maximum);

}  // namespace oriolemark

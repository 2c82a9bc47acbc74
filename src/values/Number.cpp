#include "values/Number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace oriolemark {
namespace {

constexpr int kSignificantDigits = 15;
// More decimals than the 15 digits of any double need: the smallest double begins at the 324th.
constexpr int kAllDecimals = 340;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The place of the longest leading number in a text.
struct Scan {
  std::size_t begin = 0;  // behind the blanks
  std::size_t end = 0;    // equal to `begin` where there is no number
};

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  while (at < text.size() && text[at] == ' ') ++at;
  return at;
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

std::size_t SkipSign(std::string_view text, std::size_t at) {
  return at < text.size() && (text[at] == '+' || text[at] == '-') ? at + 1 : at;
}

// An exponent counts only if it has a digit: "5E" is 5 and a letter.
std::size_t SkipExponent(std::string_view text, std::size_t at) {
  if (at == text.size() || (text[at] != 'e' && text[at] != 'E')) return at;
  const std::size_t digits = SkipSign(text, at + 1);
  const std::size_t end = SkipDigits(text, digits);
  return end > digits ? end : at;
}

Scan ScanNumber(std::string_view text) {
  const std::size_t begin = SkipBlanks(text, 0);
  const std::size_t whole = SkipSign(text, begin);
  std::size_t end = SkipDigits(text, whole);
  std::size_t digits = end - whole;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = end + 1;
    end = SkipDigits(text, fraction);
    digits += end - fraction;
  }
  if (digits == 0) return {begin, begin};
  return {begin, SkipExponent(text, end)};
}

// Whether a number that does not fit a double is too large rather than too small. The place of its
// leading digit decides; the point and the exponent shift that place.
bool IsHuge(std::string_view number) {
  const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, mantissaEnd);
  const std::size_t point = std::min(mantissa.find('.'), mantissaEnd);
  const std::size_t leading = mantissa.find_first_of("123456789");
  if (leading == std::string_view::npos) return false;
  const std::string_view exponent =
      mantissaEnd < number.size() ? number.substr(mantissaEnd + 1) : std::string_view{};
  const bool small = exponent.starts_with('-');
  long long shift = 0;
  const std::size_t digits = SkipSign(exponent, 0);
  const auto read =
      std::from_chars(exponent.data() + digits, exponent.data() + exponent.size(), shift);
  if (read.ec == std::errc::result_out_of_range) return !small;
  const long long place = static_cast<long long>(point) - static_cast<long long>(leading);
  return small ? place > shift : place > -shift;
}

struct Value {
  double number = 0;
  bool overflow = false;
};

// `number` is a text that has been scanned.
Value Evaluate(std::string_view number) {
  if (number.starts_with('+')) number.remove_prefix(1);
  double value = 0;
  const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
  if (read.ec != std::errc::result_out_of_range) return {value, false};
  if (!IsHuge(number)) return {0, false};
  const double limit = std::numeric_limits<double>::max();
  return {number.starts_with('-') ? -limit : limit, true};
}

std::optional<std::string_view> WholeNumber(std::string_view text) {
  const Scan scan = ScanNumber(text);
  if (scan.end == scan.begin || SkipBlanks(text, scan.end) != text.size()) return std::nullopt;
  return text.substr(scan.begin, scan.end - scan.begin);
}

// The 15 significant digits of a positive finite number. The place value of the first digit is
// 10^exponent.
struct Decimal {
  std::string digits;
  int exponent = 0;
};

Decimal Decompose(double value) {
  char text[32];
  const char* const end = std::to_chars(text, text + sizeof text, value,
                                        std::chars_format::scientific, kSignificantDigits - 1)
                              .ptr;
  Decimal decimal;
  const char* const mark = std::find(static_cast<const char*>(text), end, 'e');
  std::copy_if(static_cast<const char*>(text), mark, std::back_inserter(decimal.digits), IsDigit);
  const char* const exponent = mark + (mark[1] == '+' ? 2 : 1);
  std::from_chars(exponent, end, decimal.exponent);
  return decimal;
}

// Rounds to `decimals` digits behind the point, ties away from zero.
void Round(Decimal& decimal, int decimals) {
  const int kept = decimal.exponent + 1 + decimals;
  if (kept >= static_cast<int>(decimal.digits.size())) return;
  const bool up = kept >= 0 && decimal.digits[static_cast<std::size_t>(kept)] >= '5';
  decimal.digits.resize(static_cast<std::size_t>(std::max(kept, 0)));
  if (!up) return;
  auto digit = decimal.digits.rbegin();
  while (digit != decimal.digits.rend() && *digit == '9') *digit++ = '0';
  if (digit != decimal.digits.rend()) {
    ++*digit;
  } else {
    decimal.digits.insert(decimal.digits.begin(), '1');
    ++decimal.exponent;
  }
}

char DigitAt(const Decimal& decimal, int place) {
  const int index = decimal.exponent - place;
  return index >= 0 && index < static_cast<int>(decimal.digits.size())
             ? decimal.digits[static_cast<std::size_t>(index)]
             : '0';
}

std::string Write(const Decimal& decimal, int minimum, int maximum) {
  std::string text;
  for (int place = std::max(decimal.exponent, 0); place >= 0; --place) {
    text += DigitAt(decimal, place);
  }
  const std::size_t point = text.size();
  text += '.';
  const int last = static_cast<int>(decimal.digits.size()) - 1 - decimal.exponent;
  for (int place = 1; place <= std::clamp(last, minimum, maximum); ++place) {
    text += DigitAt(decimal, -place);
  }
  const std::size_t shortest = point + 1 + static_cast<std::size_t>(minimum);
  while (text.size() > shortest && text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace

double LeadingNumber(std::string_view text) {
  const Scan scan = ScanNumber(text);
  if (scan.end == scan.begin) return 0;
  return Evaluate(text.substr(scan.begin, scan.end - scan.begin)).number;
}

bool IsNumeric(std::string_view text) {
  return WholeNumber(text).has_value();
}

std::optional<double> NumberInReply(std::string_view text) {
  const auto number = WholeNumber(text);
  if (!number) return std::nullopt;
  const Value value = Evaluate(*number);
  if (value.overflow) return std::nullopt;
  return value.number;
}

std::optional<int> WholeNumberInReply(std::string_view text, int lowest, int highest) {
  const auto number = NumberInReply(text);
  if (!number) return std::nullopt;
  const double rounded = std::nearbyint(*number);
  if (rounded < lowest || rounded > highest) return std::nullopt;
  return static_cast<int>(rounded);
}

std::string NumberText(double value) {
  return FormatFixed(value, 0, kAllDecimals);
}

std::string FormatFixed(double value, int minimum, int maximum) {
  if (std::isnan(value)) value = 0;
  const double limit = std::numeric_limits<double>::max();
  Decimal decimal = Decompose(std::min(std::abs(value), limit));
  Round(decimal, maximum);
  const std::string text = Write(decimal, minimum, maximum);
  const bool zero = text.find_first_of("123456789") == std::string::npos;
  return value < 0 && !zero ? "-" + text : text;
}

}  // namespace oriolemark

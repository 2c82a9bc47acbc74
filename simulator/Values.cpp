#include "simulator/Values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <utility>

namespace tx5000 {
namespace {

using Unit = std::pair<std::string_view, double>;

// The longer unit texts come first, so that "ms" is not read as a number and "m" before "s".
constexpr std::array<Unit, 4> kTimeUnits{{{"ns", 1e9}, {"us", 1e6}, {"ms", 1e3}, {"s", 1.0}}};
constexpr std::array<Unit, 3> kVoltUnits{{{"mV", 1e3}, {"V", 1.0}, {"kV", 1e-3}}};
constexpr std::array<Unit, 5> kFrequencyUnits{
    {{"mHz", 1e3}, {"Hz", 1.0}, {"kHz", 1e-3}, {"MHz", 1e-6}, {"GHz", 1e-9}}};
constexpr std::array<Unit, 1> kNoUnit{{{"", 1.0}}};

bool IsPlainDecimal(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const bool zeroTooMany = text.size() > 1 && text[0] == '0' && text[1] != '.';
  const bool digitsOnly = std::all_of(text.begin(), text.end(),
                                      [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
  return digitsOnly && !zeroTooMany && !text.empty() && text.front() != '.' && text.back() != '.' &&
         std::count(text.begin(), text.end(), '.') <= 1;
}

std::optional<double> ParsePlainDecimal(std::string_view text) {
  const auto number = IsPlainDecimal(text) ? ParseNumber(text) : std::nullopt;
  return number == 0 && text.starts_with('-') ? std::nullopt : number;
}

// The units come in the order of their size.
std::string FormatIn(std::span<const Unit> units, double value, int digits) {
  // A size that rounds up to 1000 of a unit is written as 1 of the next.
  const double rounded = 1 - 0.5 * std::pow(10, -digits);
  const auto unit = std::find_if(units.begin(), units.end() - 1, [&](const Unit& u) {
    return std::fabs(value) * u.second < 1000 * rounded;
  });
  const double shown = value * unit->second;
  const double size = std::fabs(shown);
  const int decimals = digits - (size < 10 * rounded ? 1 : size < 100 * rounded ? 2 : 3);
  // A number of zeros has no minus sign.
  const bool zero = size < 0.5 * std::pow(10, -decimals);
  std::array<char, 40> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), zero ? 0.0 : shown,
                                 std::chars_format::fixed, decimals);
  return std::string(buffer.data(), end.ptr).append(unit->first);
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> ParseCount(std::string_view text) {
  if (text.empty() || text.size() > 9 || (text.front() == '0' && text.size() > 1)) {
    return std::nullopt;
  }
  int value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

std::optional<double> ParseVolts(std::string_view text) {
  if (!text.ends_with('V')) return std::nullopt;
  text.remove_suffix(1);
  double factor = 1.0;
  if (text.ends_with('m')) factor = 1e-3;
  if (text.ends_with('k')) factor = 1e3;
  if (factor != 1.0) text.remove_suffix(1);
  const auto number = ParsePlainDecimal(text);
  return number ? std::optional(*number * factor) : std::nullopt;
}

std::optional<double> ParseSeconds(std::string_view text) {
  for (const auto& [unit, perSecond] : kTimeUnits) {
    if (!text.ends_with(unit)) continue;
    const auto number = ParsePlainDecimal(text.substr(0, text.size() - unit.size()));
    return number ? std::optional(*number / perSecond) : std::nullopt;
  }
  return std::nullopt;
}

std::string FormatSeconds(double seconds, int digits) {
  return std::fabs(seconds) < 5e-13 ? "0.0000s" : FormatIn(kTimeUnits, seconds, digits);
}

std::string FormatVolts(double volts, int digits) {
  return FormatIn(kVoltUnits, volts, digits);
}

std::string FormatHertz(double hertz, int digits) {
  return FormatIn(kFrequencyUnits, hertz, digits);
}

std::string FormatNumber(double number, int digits) {
  return FormatIn(kNoUnit, number, digits);
}

std::string FormatDivisions(int hundredths) {
  const int size = std::abs(hundredths);
  std::string text = hundredths < 0 ? "-" : "";
  text += std::to_string(size / 100);
  text += '.';
  text += static_cast<char>('0' + size / 10 % 10);
  text += static_cast<char>('0' + size % 10);
  return text + "div";
}

std::optional<int> ParseDivisions(std::string_view text) {
  if (!text.ends_with("div")) return std::nullopt;
  const auto number = ParsePlainDecimal(text.substr(0, text.size() - 3));
  if (!number || std::fabs(*number) > 12.0) return std::nullopt;
  const int hundredths = static_cast<int>(std::lround(*number * 100));
  const bool exists = hundredths % 4 == 0 && FormatDivisions(hundredths) == text;
  return exists ? std::optional(hundredths) : std::nullopt;
}

int NearestPosition(double divisions) {
  const double limited = std::clamp(divisions, -12.0, 12.0);
  return static_cast<int>(std::lround(limited * 25)) * 4;
}

}  // namespace tx5000

#include "values/StringFunc.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

#include "values/Number.h"

namespace oriolemark {
namespace {

enum class Scale { Multiplied, Divided, OutOfRange };

// Small prefixes divide, because 100 / 1e6 and 100 * 1e-6 differ in the last digit. That digit can
// decide a limit test.
double Apply(double value, Scale scale, double factor) {
  return scale == Scale::Divided ? value / factor : value * factor;
}

struct Prefix {
  char letter;
  Scale scale;
  double factor;
  const char* exponent = "";
};

struct Unit {
  char letter;
  std::array<Prefix, 4> prefixes;
};

constexpr Unit kHertz{'H',
                      {{{'G', Scale::Multiplied, 1e9},
                        {'M', Scale::Multiplied, 1e6},
                        {'k', Scale::Multiplied, 1000},
                        {'m', Scale::Divided, 1000}}}};
constexpr Unit kSecond{'s',
                       {{{'p', Scale::Divided, 1e12, "E-12"},
                         {'n', Scale::Divided, 1e9, "E-9"},
                         {'u', Scale::Divided, 1e6, "E-6"},
                         {'m', Scale::Divided, 1000, "E-3"}}}};
constexpr Unit kVolt{'V',
                     {{{'M', Scale::Multiplied, 1e6},
                       {'k', Scale::Multiplied, 1000},
                       {'m', Scale::Divided, 1000},
                       {'u', Scale::Divided, 1e6}}}};
constexpr Prefix kNoPrefix{'\0', Scale::Multiplied, 1};

struct Parsed {
  double number;
  Prefix prefix;
};

// Whether the text has the instrument's mark for a value beyond its range or for an impossible one.
bool IsMark(std::string_view text) {
  return text.find_first_of("<>*") != std::string_view::npos;
}

std::optional<Parsed> Parse(std::string_view text, const Unit& unit) {
  if (IsMark(text)) return std::nullopt;
  const std::string packed = RemoveSpaces(text);
  const std::size_t at = packed.find(unit.letter);
  if (at == std::string::npos || at == 0) return std::nullopt;
  const char before = packed[at - 1];
  const std::string_view front = std::string_view(packed).substr(0, at);
  if (before >= '0' && before <= '9') return Parsed{LeadingNumber(front), kNoPrefix};
  for (const Prefix& prefix : unit.prefixes) {
    if (prefix.letter == before) {
      return Parsed{LeadingNumber(front.substr(0, at - 1)), prefix};
    }
  }
  return std::nullopt;
}

Converted Convert(std::string_view text, const Unit& unit) {
  const auto parsed = Parse(text, unit);
  if (!parsed) return {};
  return {Apply(parsed->number, parsed->prefix.scale, parsed->prefix.factor), true};
}

enum class Edge { Above, From };

// One range of a unit box. It takes the values above `bound`, or from it on, that no earlier row
// has taken. The last row of a table takes the rest.
struct BoxRow {
  Edge edge;
  double bound;
  Scale scale;
  double factor;
  int index;
};

// The limits of positive and of negative values differ on purpose.
constexpr BoxRow kVoltRows[] = {
    {Edge::Above, 1e9, Scale::OutOfRange, 1, 2},
    {Edge::From, 1e6, Scale::Divided, 1e6, 0},
    {Edge::From, 1000, Scale::Divided, 1000, 1},
    {Edge::From, 1, Scale::Multiplied, 1, 2},
    {Edge::From, 0.001, Scale::Multiplied, 1000, 3},
    {Edge::Above, -0.001, Scale::Multiplied, 1e6, 4},
    {Edge::Above, -1, Scale::Multiplied, 1000, 3},
    {Edge::Above, -1000, Scale::Multiplied, 1, 2},
    {Edge::Above, -1e6, Scale::Divided, 1000, 1},
    {Edge::Above, -1e9, Scale::Divided, 1e6, 0},
    {Edge::Above, 0, Scale::OutOfRange, 1, 2},
};
constexpr BoxRow kFreqRows[] = {
    {Edge::Above, 1e12, Scale::OutOfRange, 1, 3}, {Edge::From, 1e9, Scale::Divided, 1e9, 0},
    {Edge::From, 1e6, Scale::Divided, 1e6, 1},    {Edge::From, 1000, Scale::Divided, 1000, 2},
    {Edge::From, 1, Scale::Multiplied, 1, 3},     {Edge::From, 0, Scale::Multiplied, 1000, 4},
    {Edge::Above, 0, Scale::OutOfRange, 1, 0},
};
constexpr BoxRow kTimeRows[] = {
    {Edge::From, 1000, Scale::OutOfRange, 1, 4},
    {Edge::From, 1, Scale::Multiplied, 1, 4},
    {Edge::From, 0.001, Scale::Multiplied, 1000, 3},
    {Edge::From, 1e-6, Scale::Multiplied, 1e6, 2},
    {Edge::From, 1e-9, Scale::Multiplied, 1e9, 1},
    {Edge::Above, -1e-9, Scale::Multiplied, 1e12, 0},
    {Edge::Above, -1e-6, Scale::Multiplied, 1e9, 1},
    {Edge::Above, -0.001, Scale::Multiplied, 1e6, 2},
    {Edge::Above, -1, Scale::Multiplied, 1000, 3},
    {Edge::Above, -1000, Scale::Multiplied, 1, 4},
    {Edge::Above, 0, Scale::OutOfRange, 1, 0},
};

UnitBoxText ToUnitBox(double value, std::span<const BoxRow> rows) {
  const auto taken = std::find_if(rows.begin(), rows.end() - 1, [value](const BoxRow& row) {
    return row.edge == Edge::Above ? value > row.bound : value >= row.bound;
  });
  if (taken->scale == Scale::OutOfRange) return {kOutOfRangeText, taken->index};
  return {FormatFixed(Apply(value, taken->scale, taken->factor), 3, 3), taken->index};
}

constexpr std::array<std::int8_t, 256> kHexDigits = [] {
  std::array<std::int8_t, 256> digits;
  digits.fill(-1);
  constexpr std::string_view kInOrder = "0123456789ABCDEF";
  for (std::size_t i = 0; i < kInOrder.size(); ++i) {
    digits[static_cast<unsigned char>(kInOrder[i])] = static_cast<std::int8_t>(i);
  }
  return digits;
}();

int HexDigit(char c, int unknown) {
  const int digit = kHexDigits[static_cast<unsigned char>(c)];
  return digit < 0 ? unknown : digit;
}

struct ExponentRow {
  double from;
  Scale scale;
  double factor;
  const char* text;
};

constexpr ExponentRow kExponents[] = {
    {100000, Scale::Divided, 100000, "E+05"},  {10000, Scale::Divided, 10000, "E+04"},
    {1000, Scale::Divided, 1000, "E+03"},      {100, Scale::Divided, 100, "E+02"},
    {10, Scale::Divided, 10, "E+01"},          {1, Scale::Multiplied, 1, "E+00"},
    {0.1, Scale::Multiplied, 10, "E-01"},      {0.01, Scale::Multiplied, 100, "E-02"},
    {0.001, Scale::Multiplied, 1000, "E-03"},  {0.0001, Scale::Multiplied, 10000, "E-04"},
    {0.00001, Scale::Multiplied, 1e5, "E-05"}, {1e-6, Scale::Multiplied, 1e6, "E-06"},
    {1e-7, Scale::Multiplied, 1e7, "E-07"},    {1e-8, Scale::Multiplied, 1e8, "E-08"},
    {1e-9, Scale::Multiplied, 1e9, "E-09"},    {1e-10, Scale::Multiplied, 1e10, "E-10"},
};
constexpr std::size_t kExponentsOfExp2 = 11;

std::string ToExponent(double value, std::span<const ExponentRow> rows, int decimals) {
  const double size = std::abs(value);
  for (const ExponentRow& row : rows) {
    if (!(size >= row.from)) continue;
    const double mantissa = Apply(size, row.scale, row.factor);
    return FormatFixed(value < 0 ? -mantissa : mantissa, decimals, decimals) + row.text;
  }
  return FormatFixed(0, decimals, decimals) + "E+00";
}

}  // namespace

Converted ConvertStrToFreq(std::string_view text) {
  return Convert(text, kHertz);
}
Converted ConvertStrToTime(std::string_view text) {
  return Convert(text, kSecond);
}
Converted ConvertStrToVolt(std::string_view text) {
  return Convert(text, kVolt);
}

Converted ConvertStrToPercent(std::string_view text) {
  if (IsMark(text)) return {};
  const std::string packed = RemoveSpaces(text);
  const std::size_t at = packed.find('%');
  if (at == std::string::npos) return {};
  return {LeadingNumber(std::string_view(packed).substr(0, at)) / 100, true};
}

std::string ConvertTimeStrToExp(std::string_view text) {
  const auto parsed = Parse(text, kSecond);
  return parsed ? FormatFixed(parsed->number, 3, 14) + parsed->prefix.exponent : "";
}

int ConvertHexByteToNum(std::string_view text) {
  if (text.empty()) return 0;
  const int low = HexDigit(text.back(), 0);
  return text.size() == 1 ? low : HexDigit(text[text.size() - 2], low) * 16 + low;
}

std::size_t ConvertPlainTokens(std::string_view text, std::span<std::int32_t> values) {
  const std::size_t most = std::min(values.size(), text.size() / kPlainToken);
  for (std::size_t i = 0; i < most; ++i) {
    const char* const token = text.data() + i * kPlainToken;
    // Each is -1 for a character that is no digit.
    const int high = kHexDigits[static_cast<unsigned char>(token[2])];
    const int low = kHexDigits[static_cast<unsigned char>(token[3])];
    const bool plain = std::memcmp(token, "0x", 2) == 0 && token[4] == ' ' && (high | low) >= 0;
    if (!plain) return i;
    values[i] = high * 16 + low;
  }
  return most;
}

std::string RemoveSpaces(std::string_view text) {
  std::string kept(text);
  std::erase(kept, ' ');
  return kept;
}

UnitBoxText SetVoltToUnitBox(double volts) {
  return ToUnitBox(volts, kVoltRows);
}
UnitBoxText SetFreqToUnitBox(double hertz) {
  return ToUnitBox(hertz, kFreqRows);
}
UnitBoxText SetTimeToUnitBox(double seconds) {
  return ToUnitBox(seconds, kTimeRows);
}
UnitBoxText SetPercentToUnitBox(double fraction) {
  return {FormatFixed(fraction * 100, 3, 3), 0};
}

std::string ConvertTimeToUnitStr(double seconds) {
  const auto format = [](double value) { return FormatFixed(value, 1, 25); };
  // The comparisons keep the sign, so every negative time is in nanoseconds.
  if (seconds <= 1e-9) return format(seconds * 1e9) + "ns";
  if (seconds <= 1e-6) return format(seconds * 1e6) + "us";
  if (seconds <= 0.001) return format(seconds * 1000) + "ms";
  return format(seconds) + "s";
}

std::string ConvertTrigOffsetToStr(double seconds, const AskFunction& ask) {
  // Only 15 digits of the time base count, as many as a text shows.
  const double asked = ConvertStrToTime(ask(":TimeBase:RANGE:?")).value;
  const double timeBase = LeadingNumber(NumberText(asked));
  const bool fast = timeBase <= 0.02;
  const double lowest = (fast ? -14 : -6) * timeBase;
  if (seconds <= lowest) return ConvertTimeToUnitStr(lowest);
  if (fast) return seconds >= 1 ? "1s" : ConvertTimeToUnitStr(seconds);
  const double highest = 6 * timeBase;
  return ConvertTimeToUnitStr(seconds >= highest ? highest : seconds);
}

std::string ConvertNumToExp2(double value) {
  return ToExponent(value, std::span(kExponents).first(kExponentsOfExp2), 2);
}

std::string ConvertNumToExp4(double value) {
  return ToExponent(value, kExponents, 4);
}

}  // namespace oriolemark

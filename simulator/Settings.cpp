#include "simulator/Settings.h"

#include <algorithm>

#include "simulator/Values.h"

namespace tx5000 {
namespace {

using Texts = std::span<const std::string_view>;

enum class Kind {
  kList,
  kRange,       // a list that depends on the probe
  kSource,      // a list that depends on the trigger method
  kDivisions,   // -12.00div to 12.00div in steps of 0.04
  kPercent,     // 1% to 100%
  kLine,        // a number from 1 to the last line of the video standard
  kDelay,       // a time within limits that depend on the time base
  kDuration,    // a time of 0 to 10 s
  kSamples,     // a count that only a hand can change
  kSwitchHand,  // a list that only a hand can change
};

constexpr std::string_view kOnOff[] = {"ON", "OFF"};
constexpr std::string_view kCouplings[] = {"DC", "AC"};
constexpr std::string_view kProbes[] = {"1X", "10X", "100X", "1000X"};
constexpr std::string_view kTimes[] = {
    "1.000ns", "2.000ns", "5.000ns", "10.00ns", "20.00ns", "50.00ns", "100.0ns",
    "200.0ns", "500.0ns", "1.000us", "2.000us", "5.000us", "10.00us", "20.00us",
    "50.00us", "100.0us", "200.0us", "500.0us", "1.000ms", "2.000ms", "5.000ms",
    "10.00ms", "20.00ms", "50.00ms", "100.0ms", "200.0ms", "500.0ms", "1.000s",
    "2.000s",  "5.000s",  "10.00s",  "20.00s",  "50.00s"};
constexpr std::string_view kFormats[] = {"Y-T", "X-Y"};
constexpr std::string_view kMethods[] = {"EDGE", "PULSE", "VIDEO"};
// Mains is a trigger source for edges only. It is the last entry, so that it can be left off.
constexpr std::string_view kSources[] = {"CH1", "CH2", "EXT", "EXT5", "AC"};
constexpr std::string_view kSlopes[] = {"RISING", "FALLING"};
constexpr std::string_view kTrigModes[] = {"AUTO", "NORMAL", "SINGLE"};
constexpr std::string_view kTrigCouplings[] = {"DC", "AC", "HF", "LF"};
constexpr std::string_view kPolarities[] = {"NEGATIVE", "POSITIVE"};
constexpr std::string_view kSyncs[] = {"ALL LINE", "LINE Number", "ODD FIELD", "EVEN FIELD"};
constexpr std::string_view kStandards[] = {"NTSC", "PAL/SECAM"};
constexpr std::string_view kPulseModes[] = {"+LESS THAN", "+MORE THAN", "+EQUAL",
                                            "-LESS THAN", "-MORE THAN", "-EQUAL"};
constexpr std::string_view kSamplings[] = {"EQU_TIME", "REAL_TIME"};
constexpr std::string_view kAcquisitions[] = {"NORMAL", "ENVELOPE", "AVERAGE", "ANALOG"};
constexpr std::string_view kAverageCounts[] = {"2", "4", "8", "16", "32", "64", "128", "256"};
constexpr std::string_view kTypes[] = {"VECT", "DOT"};
constexpr std::string_view kGrids[] = {"FULL", "HALF", "NONE"};

constexpr std::string_view kRanges1X[] = {"2.00mV", "5.00mV", "10.0mV", "20.0mV", "50.0mV", "100mV",
                                          "200mV",  "500mV",  "1.00V",  "2.00V",  "5.00V"};
constexpr std::string_view kRanges10X[] = {"20.0mV", "50.0mV", "100mV", "200mV", "500mV", "1.00V",
                                           "2.00V",  "5.00V",  "10.0V", "20.0V", "50.0V"};
constexpr std::string_view kRanges100X[] = {"200mV", "500mV", "1.00V", "2.00V", "5.00V", "10.0V",
                                            "20.0V", "50.0V", "100V",  "200V",  "500V"};
constexpr std::string_view kRanges1000X[] = {"2.00V", "5.00V", "10.0V", "20.0V", "50.0V", "100V",
                                             "200V",  "500V",  "1kV",   "2kV",   "5kV"};

struct Row {
  Setting setting;
  std::string_view path;
  Kind kind;
  Texts values;
  std::string_view initial;
};

constexpr Row At(Setting setting, std::string_view path, Kind kind, Texts values,
                 std::string_view initial) {
  return {setting, path, kind, values, initial};
}

constexpr Row At(Setting setting, std::string_view path, Kind kind, std::string_view initial) {
  return At(setting, path, kind, {}, initial);
}

using enum Setting;

// The defaults of a tidy front panel: two channels, one above the other, with two and a half
// periods across the screen.
constexpr Row kRows[] = {
    At(kDisplay1, ":CHANNEL1:DISPLAY", Kind::kList, kOnOff, "ON"),
    At(kRange1, ":CHANNEL1:RANGE", Kind::kRange, "1.00V"),
    At(kOffset1, ":CHANNEL1:OFFSET", Kind::kDivisions, "2.00div"),
    At(kCoupling1, ":CHANNEL1:COUPLING", Kind::kList, kCouplings, "DC"),
    At(kBandwidth1, ":CHANNEL1:BWLimit", Kind::kList, kOnOff, "OFF"),
    At(kProbe1, ":CHANNEL1:PROBE", Kind::kList, kProbes, "1X"),
    At(kInvert1, ":CHANNEL1:INVERT", Kind::kList, kOnOff, "OFF"),
    At(kDisplay2, ":CHANNEL2:DISPLAY", Kind::kList, kOnOff, "ON"),
    At(kRange2, ":CHANNEL2:RANGE", Kind::kRange, "1.00V"),
    At(kOffset2, ":CHANNEL2:OFFSET", Kind::kDivisions, "-3.00div"),
    At(kCoupling2, ":CHANNEL2:COUPLING", Kind::kList, kCouplings, "DC"),
    At(kBandwidth2, ":CHANNEL2:BWLimit", Kind::kList, kOnOff, "OFF"),
    At(kProbe2, ":CHANNEL2:PROBE", Kind::kList, kProbes, "1X"),
    At(kInvert2, ":CHANNEL2:INVERT", Kind::kList, kOnOff, "OFF"),
    At(kTimeRange, ":TimeBase:RANGE", Kind::kList, kTimes, "200.0us"),
    At(kDelay, ":TimeBase:TRIGGER DELAY", Kind::kDelay, "0.0000s"),
    At(kHoldoff, ":TimeBase:Holdoff", Kind::kDuration, "100ns"),
    At(kFormat, ":TimeBase:FORMAT", Kind::kList, kFormats, "Y-T"),
    At(kScan, ":TimeBase:SCAN", Kind::kSwitchHand, kOnOff, "OFF"),
    At(kMethod, ":TRIGGER:METHOD", Kind::kList, kMethods, "EDGE"),
    At(kSource, ":TRIGGER:Source", Kind::kSource, kSources, "CH1"),
    At(kSlope, ":TRIGGER:SLOPE", Kind::kList, kSlopes, "RISING"),
    At(kTrigMode, ":TRIGGER:MODE", Kind::kList, kTrigModes, "AUTO"),
    At(kTrigCoupling, ":TRIGGER:COUPLING", Kind::kList, kTrigCouplings, "DC"),
    At(kPolarity, ":TRIGGER:POLARITY", Kind::kList, kPolarities, "POSITIVE"),
    At(kSync, ":TRIGGER:SYNC", Kind::kList, kSyncs, "ALL LINE"),
    At(kLine, ":TRIGGER:LINE_NUM", Kind::kLine, "1"),
    At(kStandard, ":TRIGGER:VIDEO STANDARD", Kind::kList, kStandards, "NTSC"),
    At(kLevel, ":TRIGGER:LEVEL", Kind::kDivisions, "0.00div"),
    At(kPulseMode, ":TRIGGER:PULSE MODE", Kind::kList, kPulseModes, "+LESS THAN"),
    At(kPulseWidth, ":TRIGGER:PULSE WIDTH", Kind::kDuration, "1us"),
    At(kSampling, ":ACQUIRE:SAMPLING", Kind::kList, kSamplings, "EQU_TIME"),
    At(kAcquisition, ":ACQUIRE:ACQUISITION", Kind::kList, kAcquisitions, "NORMAL"),
    At(kAverages, ":ACQUIRE:AVERAGES", Kind::kList, kAverageCounts, "16"),
    At(kIntensity, ":ACQUIRE:INTENSITY", Kind::kPercent, "3%"),
    At(kAntiAliasing, ":ACQUIRE:ANTI-ALIASING", Kind::kList, kOnOff, "OFF"),
    At(kType, ":DISPLAY:TYPE", Kind::kList, kTypes, "VECT"),
    At(kPersist, ":DISPLAY:PERSIST", Kind::kList, kOnOff, "OFF"),
    At(kGrid, ":DISPLAY:GRID", Kind::kList, kGrids, "FULL"),
    At(kSystemMemory, ":DATA:SysMemSize", Kind::kSamples, "4000"),
    At(kWindowMemory, ":DATA:WinMemSize", Kind::kSamples, "600"),
};

constexpr bool RowsStandInOrder() {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].setting != static_cast<Setting>(i)) return false;
  }
  return std::size(kRows) == static_cast<std::size_t>(kCount);
}
static_assert(RowsStandInOrder());

constexpr double kSlowestSwept = 0.05;  // slower time bases can roll
constexpr std::string_view kFirstRolling = "100.0ms";
constexpr double kLongestDuration = 10.0;

const Row& RowOf(Setting setting) {
  return kRows[static_cast<std::size_t>(setting)];
}

bool Holds(Texts texts, std::string_view value) {
  return std::find(texts.begin(), texts.end(), value) != texts.end();
}

Texts RangesOf(std::string_view probe) {
  if (probe == "1X") return kRanges1X;
  if (probe == "10X") return kRanges10X;
  return probe == "100X" ? Texts(kRanges100X) : Texts(kRanges1000X);
}

bool IsCountWithin(std::string_view text, int lowest, int highest) {
  const auto count = ParseCount(text);
  return count && *count >= lowest && *count <= highest;
}

}  // namespace

Setting OfChannel(Setting first, Channel channel) {
  const int step = static_cast<int>(kDisplay2) - static_cast<int>(kDisplay1);
  return static_cast<Setting>(static_cast<int>(first) + (channel == Channel::k1 ? 0 : step));
}

Settings::Settings() {
  for (std::size_t i = 0; i < texts_.size(); ++i) texts_[i] = kRows[i].initial;
}

std::optional<Setting> Settings::Find(std::string_view path) {
  const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                [&](const Row& r) { return r.path == path; });
  return row == std::end(kRows) ? std::nullopt : std::optional(row->setting);
}

std::string_view Settings::Path(Setting setting) {
  return RowOf(setting).path;
}

const std::string& Settings::Text(Setting setting) const {
  return texts_[static_cast<std::size_t>(setting)];
}

bool Settings::Is(Setting setting, std::string_view value) const {
  return Text(setting) == value;
}

Texts Settings::Choices(Setting setting) const {
  const Row& row = RowOf(setting);
  switch (row.kind) {
    case Kind::kRange:
      return RangesOf(Text(setting == kRange1 ? kProbe1 : kProbe2));
    case Kind::kSource:
      return Is(kMethod, "EDGE") ? row.values : row.values.first(row.values.size() - 1);
    default:
      return row.values;
  }
}

bool Settings::Accepts(Setting setting, std::string_view value) const {
  switch (RowOf(setting).kind) {
    case Kind::kDivisions:
      return ParseDivisions(value).has_value();
    case Kind::kPercent:
      return value.ends_with('%') && IsCountWithin(value.substr(0, value.size() - 1), 1, 100);
    case Kind::kLine:
      return IsCountWithin(value, 1, Is(kStandard, "NTSC") ? 525 : 625);
    case Kind::kDelay:
      return AcceptsDelay(value);
    case Kind::kDuration: {
      const auto seconds = ParseSeconds(value);
      return seconds && *seconds >= 0 && *seconds <= kLongestDuration;
    }
    case Kind::kSamples:
      return IsCountWithin(value, 1, kMaximumSamples);
    default:
      return Holds(Choices(setting), value);
  }
}

namespace {

struct DelayLimits {
  double lowest;
  double highest;
};

DelayLimits LimitsAt(double perDivision) {
  if (perDivision <= 0.02) return {-14 * perDivision, 1.0};
  return {-6 * perDivision, 6 * perDivision};
}

}  // namespace

bool Settings::AcceptsDelay(std::string_view value) const {
  const auto seconds = ParseSeconds(value);
  const auto [lowest, highest] = LimitsAt(Seconds(kTimeRange));
  // A limit that was written as text and read again may differ in its last digit.
  const double slack = 1e-12 * (highest - lowest);
  return seconds && *seconds >= lowest - slack && *seconds <= highest + slack;
}

bool Settings::Set(Setting setting, std::string_view value, Turner turner) {
  const Kind kind = RowOf(setting).kind;
  const bool handOnly = kind == Kind::kSamples || kind == Kind::kSwitchHand;
  if ((handOnly && turner == Turner::kWire) || !Accepts(setting, value)) return false;
  if (setting == kProbe1) RescaleRange(kProbe1, kRange1, value);
  if (setting == kProbe2) RescaleRange(kProbe2, kRange2, value);
  texts_[static_cast<std::size_t>(setting)] = value;
  CarryThrough(setting);
  return true;
}

void Settings::RescaleRange(Setting probe, Setting range, std::string_view newProbe) {
  const Texts from = RangesOf(Text(probe));
  const Texts to = RangesOf(newProbe);
  const auto row = std::find(from.begin(), from.end(), Text(range)) - from.begin();
  texts_[static_cast<std::size_t>(range)] = to[static_cast<std::size_t>(row)];
}

void Settings::LimitDelay() {
  if (AcceptsDelay(Text(kDelay))) return;
  const auto [lowest, highest] = LimitsAt(Seconds(kTimeRange));
  const double limited = std::clamp(Seconds(kDelay), lowest, highest);
  texts_[static_cast<std::size_t>(kDelay)] = FormatSeconds(limited);
}

void Settings::CarryThrough(Setting changed) {
  const bool swept = Seconds(kTimeRange) <= kSlowestSwept;
  if (changed == kTimeRange) {
    LimitDelay();
    if (swept) texts_[static_cast<std::size_t>(kScan)] = "OFF";
  }
  if (changed == kScan && swept && Is(kScan, "ON")) {
    texts_[static_cast<std::size_t>(kTimeRange)] = kFirstRolling;
    LimitDelay();
  }
  if (changed == kStandard && !Accepts(kLine, Text(kLine))) {
    texts_[static_cast<std::size_t>(kLine)] = "525";
  }
}

double Settings::VoltsPerDivision(Channel channel) const {
  return ParseVolts(Text(OfChannel(kRange1, channel))).value_or(1.0);
}

double Settings::ProbeFactor(Channel channel) const {
  const std::string_view text = Text(OfChannel(kProbe1, channel));
  return ParseCount(text.substr(0, text.size() - 1)).value_or(1);
}

double Settings::Divisions(Setting setting) const {
  return ParseDivisions(Text(setting)).value_or(0) / 100.0;
}

double Settings::Seconds(Setting setting) const {
  return ParseSeconds(Text(setting)).value_or(0);
}

int Settings::Number(Setting setting) const {
  return ParseCount(Text(setting)).value_or(1);
}

}  // namespace tx5000

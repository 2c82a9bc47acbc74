#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tx5000 {

// Every setting of the instrument, in the order of its table.
enum class Setting {
  kDisplay1,
  kRange1,
  kOffset1,
  kCoupling1,
  kBandwidth1,
  kProbe1,
  kInvert1,
  kDisplay2,
  kRange2,
  kOffset2,
  kCoupling2,
  kBandwidth2,
  kProbe2,
  kInvert2,
  kTimeRange,
  kDelay,
  kHoldoff,
  kFormat,
  kScan,
  kMethod,
  kSource,
  kSlope,
  kTrigMode,
  kTrigCoupling,
  kPolarity,
  kSync,
  kLine,
  kStandard,
  kLevel,
  kPulseMode,
  kPulseWidth,
  kSampling,
  kAcquisition,
  kAverages,
  kIntensity,
  kAntiAliasing,
  kType,
  kPersist,
  kGrid,
  kSystemMemory,
  kWindowMemory,
  kCount
};

enum class Channel { k1, k2 };

// Who turns: the wire reaches less than a hand, which also sets what the wire can only ask.
enum class Turner { kWire, kHand };

// The most samples that one trace can have.
inline constexpr int kMaximumSamples = 17000;

// The instrument's settings as texts in its own form. Each text can be read as a quantity at all
// times without a further check. It is one that the setting accepts now; mains alone stays the
// trigger's source when the method leaves the edges, which it belongs to.
class Settings {
 public:
  Settings();

  // The setting with this path, for instance ":CHANNEL1:RANGE". Case and blanks count.
  static std::optional<Setting> Find(std::string_view path);
  static std::string_view Path(Setting setting);

  // False, and nothing changed, where the value is not one that the setting takes now. Changes
  // that others depend on are carried through: a probe rescales the range, a time base limits the
  // delay and ends the rolling display, a video standard limits the line.
  bool Set(Setting setting, std::string_view value, Turner turner);

  // What is in force, and what a query is answered with.
  const std::string& Text(Setting setting) const;
  bool Is(Setting setting, std::string_view value) const;

  double VoltsPerDivision(Channel channel) const;  // at the probe's tip
  double ProbeFactor(Channel channel) const;
  double Divisions(Setting setting) const;  // offsets and level
  double Seconds(Setting setting) const;    // time base, delay, holdoff, pulse width
  int Number(Setting setting) const;        // averages and sizes

  // The texts that a setting of the list kind takes now; empty for the other kinds.
  std::span<const std::string_view> Choices(Setting setting) const;

 private:
  bool Accepts(Setting setting, std::string_view value) const;
  bool AcceptsDelay(std::string_view value) const;
  void LimitDelay();
  void RescaleRange(Setting probe, Setting range, std::string_view newProbe);
  void CarryThrough(Setting changed);

  std::array<std::string, static_cast<std::size_t>(Setting::kCount)> texts_;
};

// The setting of the given channel that stands at `first` for channel 1.
Setting OfChannel(Setting first, Channel channel);

}  // namespace tx5000

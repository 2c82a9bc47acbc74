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

// Who changes a setting. A hand can also set what a command can only ask for.
enum class Turner { kWire, kHand };

// The largest number of samples in one trace.
inline constexpr int kMaximumSamples = 17000;

// The instrument's settings as texts in its own form. Each text can be read as a quantity at any
// time without a further check, and is one that the setting accepts now. The only exception is
// mains as the trigger source: it belongs to edges, but stays when another method is chosen.
class Settings {
 public:
  Settings();

  // The setting with this path, for instance ":CHANNEL1:RANGE". Case and blanks must match.
  static std::optional<Setting> Find(std::string_view path);
  static std::string_view Path(Setting setting);

  // Returns false and changes nothing if the setting does not accept the value now. Also changes
  // dependent settings: a probe rescales the range, a time base limits the delay and ends the
  // rolling display, a video standard limits the line.
  bool Set(Setting setting, std::string_view value, Turner turner);

  // The present text, which a query also returns.
  const std::string& Text(Setting setting) const;
  bool Is(Setting setting, std::string_view value) const;

  double VoltsPerDivision(Channel channel) const;  // at the probe's tip
  double ProbeFactor(Channel channel) const;
  double Divisions(Setting setting) const;  // offsets and level
  double Seconds(Setting setting) const;    // time base, delay, holdoff, pulse width
  int Number(Setting setting) const;        // averages and sizes

  // The texts that a setting of the list kind accepts now. Empty for the other kinds.
  std::span<const std::string_view> Choices(Setting setting) const;

 private:
  bool Accepts(Setting setting, std::string_view value) const;
  bool AcceptsDelay(std::string_view value) const;
  void LimitDelay();
  void RescaleRange(Setting probe, Setting range, std::string_view newProbe);
  void CarryThrough(Setting changed);

  std::array<std::string, static_cast<std::size_t>(Setting::kCount)> texts_;
};

// The given channel's setting. `first` is the same setting of channel 1.
Setting OfChannel(Setting first, Channel channel);

}  // namespace tx5000

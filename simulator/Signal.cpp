#include "simulator/Signal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "simulator/Values.h"

namespace tx5000 {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kBurstCarrier = 10;  // carrier cycles in one repetition
constexpr double kBurstCycles = 4;    // of these, the cycles that are not silent
constexpr double kModulationDepth = 0.6;
constexpr double kCarrierPerModulation = 27.3;  // not a whole number, so that records differ
constexpr double kEdgeSteepness = 25;  // edges of a square take about a hundredth of its period

double Fraction(double value) {
  return value - std::floor(value);
}

// The shape of a signal over one turn, from -1 to 1.
double ShapeOf(const Signal& signal, double turns) {
  switch (signal.kind) {
    case SignalKind::kSine:
    case SignalKind::kModulated:
      return std::sin(kTurn * turns);
    case SignalKind::kSquare:
      return std::clamp(kEdgeSteepness * std::sin(kTurn * turns), -1.0, 1.0);
    case SignalKind::kRamp:
      return 2 * Fraction(turns) - 1;
    case SignalKind::kBurst: {
      const double cycles = Fraction(turns) * kBurstCarrier;
      return cycles < kBurstCycles ? std::sin(kTurn * cycles) : 0;
    }
    case SignalKind::kNoise:
      break;
  }
  return 0;
}

// The factor of the modulation; 1 at its highest.
double ModulationAt(const Signal& signal, double moment) {
  const double period = ModulationPeriodOf(signal);
  if (period == 0) return 1;
  const double swing = std::sin(kTurn * Fraction(moment / period));
  return (1 + kModulationDepth * swing) / (1 + kModulationDepth);
}

struct Preset {
  std::string_view name;
  std::array<Signal, 2> channels;
};

constexpr Signal Make(SignalKind kind, double frequency, double amplitude, double phase = 0) {
  return {kind, frequency, amplitude, 0, phase};
}

constexpr std::array<Signal, 2> Both(Signal signal) {
  return {signal, signal};
}

constexpr Preset kPresets[] = {
    {"sine", Both(Make(SignalKind::kSine, 1000, 1.5))},
    {"square", Both(Make(SignalKind::kSquare, 1000, 1.5))},
    {"ramp", Both(Make(SignalKind::kRamp, 0.4, 1.5))},
    {"noise", Both(Make(SignalKind::kNoise, 1000, 1.0))},
    {"burst", Both(Make(SignalKind::kBurst, 1000, 1.5))},
    {"modulated", Both(Make(SignalKind::kModulated, 1000, 1.5))},
    {"lissajous", {Make(SignalKind::kSine, 1000, 1.5), Make(SignalKind::kSine, 1500, 1.5, 0.25)}},
};

std::string_view TakeWord(std::string_view& text) {
  const auto end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return word;
}

}  // namespace

double ValueAt(const Signal& signal, double time, double clock) {
  const double shape = ShapeOf(signal, signal.frequency * time + signal.phase);
  return signal.mean + signal.amplitude * shape * ModulationAt(signal, clock + time);
}

double MeanValueAt(const Signal& signal, double time) {
  const double shape = ShapeOf(signal, signal.frequency * time + signal.phase);
  const bool breathes = signal.kind == SignalKind::kModulated;
  return signal.mean + signal.amplitude * shape / (breathes ? 1 + kModulationDepth : 1);
}

double RepetitionOf(const Signal& signal) {
  return signal.kind == SignalKind::kNoise ? 0 : 1 / signal.frequency;
}

double ModulationPeriodOf(const Signal& signal) {
  return signal.kind == SignalKind::kModulated ? kCarrierPerModulation / signal.frequency : 0;
}

double CommonRepetition(const Signal& first, const Signal& second) {
  const double one = RepetitionOf(first);
  const double other = RepetitionOf(second);
  if (one == 0 || other == 0) return one + other;
  for (int times = 1; times <= 20; ++times) {
    const double others = one * times / other;
    if (others > 0.5 && std::fabs(others - std::round(others)) < 1e-9) return one * times;
  }
  return one;
}

double NoiseAt(std::uint32_t seed, std::uint64_t record, int channel, std::uint64_t sample) {
  std::uint64_t state = seed + record * 0x9E3779B97F4A7C15u;
  state ^= (sample * 2 + static_cast<std::uint64_t>(channel)) * 0xD1B54A32D192ED03u;
  // The last rounds of a good hash. After them, neighbouring arguments give unrelated numbers.
  state = (state ^ (state >> 30)) * 0xBF58476D1CE4E5B9u;
  state = (state ^ (state >> 27)) * 0x94D049BB133111EBu;
  state ^= state >> 31;
  return static_cast<double>(state >> 11) * (2.0 / 9007199254740992.0) - 1;
}

std::optional<Signal> ParseSignal(std::string_view text, int channel) {
  const std::string_view name = TakeWord(text);
  const auto preset = std::find_if(std::begin(kPresets), std::end(kPresets),
                                   [&](const Preset& p) { return p.name == name; });
  if (preset == std::end(kPresets)) return std::nullopt;
  Signal signal = preset->channels[channel == 1 ? 0 : 1];
  if (!text.empty()) {
    // The frequency applies to the first signal of a figure; the second keeps its ratio to it.
    const auto frequency = ParseNumber(TakeWord(text));
    if (!frequency || *frequency < 1e-3 || *frequency > 1e9) return std::nullopt;
    signal.frequency *= *frequency / preset->channels[0].frequency;
  }
  if (!text.empty()) {
    const auto amplitude = ParseNumber(TakeWord(text));
    if (!amplitude || *amplitude < 0 || *amplitude > 1e3) return std::nullopt;
    signal.amplitude = *amplitude;
  }
  return text.empty() ? std::optional(signal) : std::nullopt;
}

Signal InitialSignal(int channel) {
  if (channel == 1) return Make(SignalKind::kSine, 1000, 1.6);
  Signal logic = Make(SignalKind::kSquare, 1000, 1.5);
  logic.mean = 1.5;
  return logic;
}

}  // namespace tx5000

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tx5000 {

enum class SignalKind {
  kSine,
  kSquare,
  kRamp,
  kNoise,
  kBurst,      // four cycles, then rest
  kModulated,  // a sine whose amplitude changes slowly
};

// The signal at an input, in volts before any probe factor.
struct Signal {
  SignalKind kind = SignalKind::kSine;
  double frequency = 1000;  // Hz, above 0; of a burst: bursts a second
  double amplitude = 1;     // from the mean to the peak, 0 or more
  double mean = 0;
  double phase = 0;  // in turns
};

// The signal without its noise. `time` counts from a moment at which all phases are at their start.
// `clock` is the time since power-on; only the slow modulation depends on it. Both are in seconds.
double ValueAt(const Signal& signal, double time, double clock);

// The same with the modulation at its mean, as the average of many records shows it.
double MeanValueAt(const Signal& signal, double time);

// The time in seconds after which the signal without modulation repeats; 0 if it never does.
double RepetitionOf(const Signal& signal);
double ModulationPeriodOf(const Signal& signal);

// The time in seconds after which both signals repeat. If there is none within reach, that of the
// first alone.
double CommonRepetition(const Signal& first, const Signal& second);

// A number evenly spread over -1 to 1. The same four arguments give the same number.
double NoiseAt(std::uint32_t seed, std::uint64_t record, int channel, std::uint64_t sample);

// Reads "sine", "square 2000" or "modulated 1000 2.5": a kind, then optionally frequency and
// amplitude. The kinds are sine, square, ramp, noise, burst, modulated, and "lissajous". The last
// is a sine that forms a figure with the lissajous of the other channel. Returns nothing for a text
// that is not understood.
std::optional<Signal> ParseSignal(std::string_view text, int channel);

// The signal at an input when the instrument is switched on.
Signal InitialSignal(int channel);

}  // namespace tx5000

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
  kModulated,  // a sine whose amplitude breathes slowly
};

// What is connected to an input. Volts at the input, before any probe factor.
struct Signal {
  SignalKind kind = SignalKind::kSine;
  double frequency = 1000;  // Hz, above 0; of a burst: bursts a second
  double amplitude = 1;     // from the mean to the peak, 0 or more
  double mean = 0;
  double phase = 0;  // in turns
};

// The signal without its noise. `time` runs from a moment at which all phases are at their start;
// `clock` is the moment itself, on which only the slow modulation depends. Both in seconds.
double ValueAt(const Signal& signal, double time, double clock);

// The same with the modulation at its mean, as averaging many records shows it.
double MeanValueAt(const Signal& signal, double time);

// Seconds after which the signal without modulation repeats; 0 where it never does.
double RepetitionOf(const Signal& signal);
double ModulationPeriodOf(const Signal& signal);

// The seconds after which both repeat, or the first alone where they share none soon.
double CommonRepetition(const Signal& first, const Signal& second);

// Evenly spread over -1 to 1, the same for the same four numbers.
double NoiseAt(std::uint32_t seed, std::uint64_t record, int channel, std::uint64_t sample);

// "sine", "square 2000" or "modulated 1000 2.5": kind, then frequency and amplitude if given. The
// kinds are sine, square, ramp, noise, burst, modulated, and "lissajous" for a sine that makes a
// figure with the same on the other channel. Nothing for a text that is not understood.
std::optional<Signal> ParseSignal(std::string_view text, int channel);

// What hangs on the inputs of a fresh instrument.
Signal InitialSignal(int channel);

}  // namespace tx5000

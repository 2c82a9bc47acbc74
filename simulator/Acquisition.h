#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "simulator/Settings.h"
#include "simulator/Signal.h"

// Turns signals into samples. Everything here is a pure function of settings, signals and the
// moment of a record. So the samples, measures and pictures of one record show the same signal.
namespace tx5000 {

struct Inputs {
  std::array<Signal, 2> signals{InitialSignal(1), InitialSignal(2)};
  std::uint32_t seed = 1;

  const Signal& Of(Channel channel) const { return signals[channel == Channel::k1 ? 0 : 1]; }
};

// One filling of the sample memory.
struct Record {
  double start = 0;          // time of the trigger point within the signals' repetition, seconds
  double clock = 0;          // seconds since power-on
  std::uint64_t number = 0;  // noise differs from number to number
};

enum class Trace { kPlain, kUpper, kLower };

// The writing position of the rolling display and the width of its gap, in 300ths of the screen's
// width.
struct RollingGap {
  int start = 0;
  int width = 0;
};

// The coupling, the probe and the inverter of a channel, as they are when it is made.
class InputStage {
 public:
  InputStage(const Settings& settings, const Inputs& inputs, Channel channel);

  // Volts at the input to volts at the probe's tip.
  double Pass(double volts) const { return (volts - blocked_) * factor_; }

 private:
  double blocked_ = 0;  // the mean that AC coupling keeps out
  double factor_;
};

struct Extremes {
  double lowest;
  double highest;
};
Extremes ExtremesOf(const Settings& settings, const Inputs& inputs, Channel channel);

// The time of the first trigger event at or after time 0, in seconds. Returns nothing if the source
// never meets the condition.
std::optional<double> FindTrigger(const Settings& settings, const Inputs& inputs, double clock);

// The time that the screen's width shows, in seconds.
double ScreenSeconds(const Settings& settings);

// Time of a sample, counted from the trigger point. Index 0 is the left edge of the screen.
double TimeOfSample(const Settings& settings, int index);

// One trace of the screen's width, WinMemSize samples. 125 is the vertical centre, 25 counts are a
// division, and lower values are higher on the screen.
std::vector<std::uint8_t> TakeSamples(const Settings& settings, const Inputs& inputs,
                                      const Record& record, Channel channel, Trace trace);

// The two traces of an envelope, in less time than one after the other.
struct Envelope {
  std::vector<std::uint8_t> upper;
  std::vector<std::uint8_t> lower;
};
Envelope TakeEnvelope(const Settings& settings, const Inputs& inputs, const Record& record,
                      Channel channel);

// How many samples the rolling display's present pass has written, which follow those of the pass
// before in time. 0 for a record that does not roll.
int WrittenSamples(const Settings& settings, const Record& record);

RollingGap GapOf(const Settings& settings, const Record& record);

}  // namespace tx5000

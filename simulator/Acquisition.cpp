#include "simulator/Acquisition.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tx5000 {
namespace {

constexpr double kScreenDivisions = 12;
constexpr double kCentre = 125;
constexpr double kCountsPerDivision = 25;
constexpr double kOwnNoise = 0.4;  // counts; the instrument's own, below what a row can show
constexpr double kNoiseBehindLimit = 0.4;  // share of the noise that passes the bandwidth limit
constexpr int kEnvelopeRecords = 8;
constexpr int kEnvelopePoints = 4;  // samples taken within one sample's time
constexpr int kGridUnits = 300;
constexpr int kGapUnits = 12;

bool IsOn(const Settings& settings, Setting first, Channel channel, std::string_view value) {
  return settings.Is(OfChannel(first, channel), value);
}

// Turns one moment of the signal into a sample, for one channel of one record.
class Digitiser {
 public:
  Digitiser(const Settings& settings, const Inputs& inputs, Channel channel)
      : seed_(inputs.seed),
        signal_(inputs.Of(channel)),
        channel_(channel == Channel::k1 ? 0 : 1),
        offset_(settings.Divisions(OfChannel(Setting::kOffset1, channel))),
        range_(settings.VoltsPerDivision(channel)),
        stage_(settings, inputs, channel),
        averaged_(settings.Is(Setting::kAcquisition, "AVERAGE")),
        noise_(IsOn(settings, Setting::kBandwidth1, channel, "ON") ? kNoiseBehindLimit : 1) {
    if (averaged_) noise_ /= std::sqrt(settings.Number(Setting::kAverages));
  }

  // The volts at the input, without noise.
  double CleanAt(double time, double clock) const {
    return averaged_ ? MeanValueAt(signal_, time) : ValueAt(signal_, time, clock);
  }
  // Whether they depend on the clock.
  bool Breathes() const { return !averaged_ && ModulationPeriodOf(signal_) > 0; }

  // The sample in counts, not yet limited to a byte. `record` is the record's number, `point`
  // distinguishes moments within one sample.
  double CountsOf(double clean, std::uint64_t record, int index, int point) const {
    const auto sample = static_cast<std::uint64_t>(index) * kEnvelopePoints + point;
    const double noise = noise_ * NoiseAt(seed_, record, channel_, sample);
    const bool noisy = signal_.kind == SignalKind::kNoise;
    const double volts = clean + (noisy ? noise * signal_.amplitude : 0);
    const double divisions = offset_ + stage_.Pass(volts) / range_;
    return kCentre - kCountsPerDivision * divisions + kOwnNoise * noise;
  }

 private:
  std::uint32_t seed_;
  const Signal& signal_;
  int channel_;
  double offset_;
  double range_;
  InputStage stage_;
  bool averaged_;
  double noise_;
};

std::uint8_t ToByte(double counts) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(counts, 0.0, 255.0)));
}

// The record of some records ago: at the same point of the signals, at another of the modulation.
Record RecordBefore(const Inputs& inputs, const Record& record, int times) {
  constexpr double kSpread = 0.381966;  // turns that spread evenly, however many there are
  Record before = record;
  before.number += static_cast<std::uint64_t>(times) << 32;
  for (const Signal& signal : inputs.signals) {
    before.clock -= times * kSpread * ModulationPeriodOf(signal);
  }
  return before;
}

// The smallest and the largest count. Counts grow downwards, so the smallest is the upper trace.
std::pair<double, double> EnvelopeAt(const Inputs& inputs, const Digitiser& digitiser,
                                     const Record& record, double step, int index) {
  double smallest = 1e9;
  double largest = -1e9;
  for (int point = 0; point < kEnvelopePoints; ++point) {
    const double time = record.start + step * point / kEnvelopePoints;
    double clean = digitiser.CleanAt(time, record.clock);
    for (int times = 0; times < kEnvelopeRecords; ++times) {
      const Record before = RecordBefore(inputs, record, times);
      if (digitiser.Breathes()) clean = digitiser.CleanAt(time, before.clock);
      const double counts = digitiser.CountsOf(clean, before.number, index, point);
      smallest = std::min(smallest, counts);
      largest = std::max(largest, counts);
    }
  }
  return {smallest, largest};
}

// To the left of the writing position is the present pass, to its right the pass before. Each
// sample has the noise of its own pass, so it stays the same until it is overwritten.
Record RolledRecord(const Record& record, double pass, double column) {
  double passes = std::floor(record.clock / pass);
  if (passes * pass + column > record.clock) passes -= 1;
  return {passes * pass + column, 0, static_cast<std::uint64_t>(passes + 1)};
}

// Calls `visit` with the index of each sample and with the record that it is of, which begins at
// the sample's own time.
template <typename Visit>
void ForEachSample(const Settings& settings, const Record& record, Visit visit) {
  const int count = settings.Number(Setting::kWindowMemory);
  const bool rolling = settings.Is(Setting::kScan, "ON");
  const double width = ScreenSeconds(settings);
  const double left = TimeOfSample(settings, 0);
  for (int i = 0; i < count; ++i) {
    const double column = width * i / count;
    Record seen = rolling ? RolledRecord(record, width, column) : record;
    if (!rolling) seen.start += left + column;
    visit(i, seen);
  }
}

}  // namespace

InputStage::InputStage(const Settings& settings, const Inputs& inputs, Channel channel)
    : factor_(settings.ProbeFactor(channel)) {
  if (IsOn(settings, Setting::kCoupling1, channel, "AC")) blocked_ = inputs.Of(channel).mean;
  if (IsOn(settings, Setting::kInvert1, channel, "ON")) factor_ = -factor_;
}

Extremes ExtremesOf(const Settings& settings, const Inputs& inputs, Channel channel) {
  const Signal& signal = inputs.Of(channel);
  const InputStage stage(settings, inputs, channel);
  const auto [lowest, highest] = std::minmax(
      {stage.Pass(signal.mean - signal.amplitude), stage.Pass(signal.mean + signal.amplitude)});
  return {lowest, highest};
}

double ScreenSeconds(const Settings& settings) {
  return kScreenDivisions * settings.Seconds(Setting::kTimeRange);
}

double TimeOfSample(const Settings& settings, int index) {
  const double fromLeft = ScreenSeconds(settings) * index / settings.Number(Setting::kWindowMemory);
  return fromLeft - ScreenSeconds(settings) / 2 + settings.Seconds(Setting::kDelay);
}

std::vector<std::uint8_t> TakeSamples(const Settings& settings, const Inputs& inputs,
                                      const Record& record, Channel channel, Trace trace) {
  if (trace != Trace::kPlain) {
    auto [upper, lower] = TakeEnvelope(settings, inputs, record, channel);
    return trace == Trace::kUpper ? upper : lower;
  }
  const Digitiser digitiser(settings, inputs, channel);
  std::vector<std::uint8_t> samples;
  ForEachSample(settings, record, [&](int index, const Record& seen) {
    const double clean = digitiser.CleanAt(seen.start, seen.clock);
    samples.push_back(ToByte(digitiser.CountsOf(clean, seen.number, index, 0)));
  });
  return samples;
}

Envelope TakeEnvelope(const Settings& settings, const Inputs& inputs, const Record& record,
                      Channel channel) {
  const double step = ScreenSeconds(settings) / settings.Number(Setting::kWindowMemory);
  const Digitiser digitiser(settings, inputs, channel);
  Envelope envelope;
  ForEachSample(settings, record, [&](int index, const Record& seen) {
    const auto [smallest, largest] = EnvelopeAt(inputs, digitiser, seen, step, index);
    envelope.upper.push_back(ToByte(smallest));
    envelope.lower.push_back(ToByte(largest));
  });
  return envelope;
}

int WrittenSamples(const Settings& settings, const Record& record) {
  if (!settings.Is(Setting::kScan, "ON")) return 0;
  const double passes = record.clock / ScreenSeconds(settings);
  const int count = settings.Number(Setting::kWindowMemory);
  return std::min(count, static_cast<int>((passes - std::floor(passes)) * count) + 1);
}

RollingGap GapOf(const Settings& settings, const Record& record) {
  if (!settings.Is(Setting::kScan, "ON")) return {};
  const double passes = record.clock / ScreenSeconds(settings);
  const double start = (passes - std::floor(passes)) * kGridUnits;
  // A rounding error may leave a whole unit slightly too small.
  return {static_cast<int>(start + 1e-6) % kGridUnits, kGapUnits};
}

}  // namespace tx5000

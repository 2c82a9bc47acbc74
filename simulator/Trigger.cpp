#include <algorithm>
#include <cmath>

#include "simulator/Acquisition.h"

namespace tx5000 {
namespace {

constexpr int kStepsPerRepetition = 2000;  // fine enough for the cycles of a burst
constexpr double kMainsPeriod = 0.02;
constexpr double kEqualWithin = 0.1;  // two widths count as equal within a tenth

enum class Edge { kRising, kFalling };

// The source channel as the trigger sees it.
class Source {
 public:
  Source(const Settings& settings, const Inputs& inputs, Channel channel, double clock)
      : signal_(inputs.Of(channel)), stage_(settings, inputs, channel), clock_(clock) {
    // The level counts from the channel's own zero, so moving a trace does not stop its trigger.
    level_ = settings.Divisions(Setting::kLevel) * settings.VoltsPerDivision(channel);
    const bool coupled = settings.Is(Setting::kTrigCoupling, "AC");
    const auto [lowest, highest] = ExtremesOf(settings, inputs, channel);
    if (coupled) level_ += (lowest + highest) / 2;
    repetition_ = RepetitionOf(signal_);
  }

  double Repetition() const { return repetition_; }

  std::optional<double> FindCrossing(double from, double until, Edge edge) const {
    const double step = repetition_ / kStepsPerRepetition;
    for (double time = from; time < until; time += step) {
      if (IsBefore(time, edge) && !IsBefore(time + step, edge)) return Narrow(time, step, edge);
    }
    return std::nullopt;
  }

 private:
  bool IsBefore(double time, Edge edge) const {
    const double volts = stage_.Pass(ValueAt(signal_, time, clock_));
    return edge == Edge::kRising ? volts < level_ : volts > level_;
  }

  double Narrow(double from, double step, Edge edge) const {
    for (int halving = 0; halving < 40; ++halving) {
      step /= 2;
      if (IsBefore(from + step, edge)) from += step;
    }
    return from + step;
  }

  const Signal& signal_;
  InputStage stage_;
  double clock_;
  double level_ = 0;
  double repetition_ = 0;
};

bool FitsWidth(const Settings& settings, double width) {
  const std::string_view mode = settings.Text(Setting::kPulseMode);
  const double wanted = settings.Seconds(Setting::kPulseWidth);
  if (mode.ends_with("LESS THAN")) return width < wanted;
  if (mode.ends_with("MORE THAN")) return width > wanted;
  return std::fabs(width - wanted) <= kEqualWithin * wanted;
}

// A pulse triggers at its end, when its width is known.
std::optional<double> FindPulse(const Settings& settings, const Source& source) {
  const bool positive = settings.Text(Setting::kPulseMode).starts_with('+');
  const Edge opening = positive ? Edge::kRising : Edge::kFalling;
  const Edge closing = positive ? Edge::kFalling : Edge::kRising;
  const double until = 2 * source.Repetition();
  auto begin = source.FindCrossing(0, until, opening);
  while (begin) {
    const auto end = source.FindCrossing(*begin, until + source.Repetition(), closing);
    if (!end) return std::nullopt;
    if (FitsWidth(settings, *end - *begin)) return end;
    begin = source.FindCrossing(*end, until, opening);
  }
  return std::nullopt;
}

}  // namespace

std::optional<double> FindTrigger(const Settings& settings, const Inputs& inputs, double clock) {
  const std::string_view name = settings.Text(Setting::kSource);
  // The external input is never connected, and no signal here contains a video picture.
  if (settings.Is(Setting::kMethod, "VIDEO") || name.starts_with("EXT")) return std::nullopt;
  if (name == "AC") return std::ceil(clock / kMainsPeriod) * kMainsPeriod;
  const Channel channel = name == "CH1" ? Channel::k1 : Channel::k2;
  const Source source(settings, inputs, channel, clock);
  if (source.Repetition() == 0) return std::nullopt;
  if (settings.Is(Setting::kMethod, "PULSE")) return FindPulse(settings, source);
  const Edge edge = settings.Is(Setting::kSlope, "RISING") ? Edge::kRising : Edge::kFalling;
  return source.FindCrossing(0, 2 * source.Repetition(), edge);
}

}  // namespace tx5000

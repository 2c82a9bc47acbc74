#include "simulator/Measures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "simulator/Edges.h"
#include "simulator/Values.h"

namespace tx5000 {
namespace {

constexpr int kCentre = 125;
constexpr int kRowsPerDivision = 25;
// The rows of the screen, counted upwards from its middle.
constexpr int kHighestRow = 99;
constexpr int kLowestRow = -100;
constexpr double kFlat = 4;              // rows; a lower trace is nothing but noise
constexpr double kSamplesPerPeriod = 3;  // below, the samples do not show how often it swings
constexpr double kSamplesPerStep = 1;    // the shortest time that differs from none
constexpr int kVoltDigits = 4;

// A trace, prepared to be measured. Heights are rows above the middle of the screen.
struct Picture {
  std::vector<double> heights;
  double lowest = 0;
  double highest = 0;
  double base = 0;
  double top = 0;
  bool cutAbove = false;  // a part of it is above the screen
  bool cutBelow = false;
  std::vector<Edge> edges;  // none of a flat trace
  double voltsPerRow = 0;
  double zero = 0;  // row of 0 V
  double step = 0;  // seconds from sample to sample

  double VoltsAt(double height) const { return (height - zero) * voltsPerRow; }
  bool IsCut() const { return cutAbove || cutBelow; }
};

// The row at which the trace stays most, among those from `first` to `last`. A trace that stays
// nowhere, such as a ramp, gives `otherwise`.
double RestingRow(const Picture& picture, double first, double last, double otherwise) {
  constexpr double kManyTimesTheMean = 5;
  std::array<int, kHighestRow - kLowestRow + 1> counts{};
  for (const double height : picture.heights) {
    if (height >= first && height <= last) ++counts[static_cast<std::size_t>(height - kLowestRow)];
  }
  const auto most = std::max_element(counts.begin(), counts.end());
  const double mean =
      static_cast<double>(picture.heights.size()) / (picture.highest - picture.lowest + 1);
  return *most < kManyTimesTheMean * mean ? otherwise
                                          : kLowestRow + static_cast<double>(most - counts.begin());
}

Picture TakePicture(const Settings& settings, const Inputs& inputs, const Record& record,
                    Channel channel) {
  Picture picture;
  auto samples = TakeSamples(settings, inputs, record, channel, Trace::kPlain);
  // In the order of time: the gap of the rolling display is no edge.
  std::rotate(samples.begin(), samples.begin() + WrittenSamples(settings, record), samples.end());
  for (const int sample : samples) {
    const int height = kCentre - sample;
    picture.cutAbove = picture.cutAbove || height > kHighestRow;
    picture.cutBelow = picture.cutBelow || height < kLowestRow;
    picture.heights.push_back(std::clamp(height, kLowestRow, kHighestRow));
  }
  const auto [lowest, highest] =
      std::minmax_element(picture.heights.begin(), picture.heights.end());
  picture.lowest = *lowest;
  picture.highest = *highest;
  // A trace may rest in the middle too, between two bursts.
  const double reach = 0.4 * (*highest - *lowest);
  picture.base = RestingRow(picture, *lowest, *lowest + reach, *lowest);
  picture.top = RestingRow(picture, *highest - reach, *highest, *highest);
  if (picture.top - picture.base >= kFlat) {
    picture.edges = FindEdges(picture.heights, picture.base, picture.top);
  }
  picture.voltsPerRow = settings.VoltsPerDivision(channel) / kRowsPerDivision;
  picture.zero = settings.Divisions(OfChannel(Setting::kOffset1, channel)) * kRowsPerDivision;
  picture.step = ScreenSeconds(settings) / static_cast<double>(samples.size());
  return picture;
}

struct Reading {
  double value = 0;
  char sign = '=';  // '>' and '<': the true value lies beyond
};
using Measured = std::optional<Reading>;

Measured Level(const Picture& picture, double height) {
  const bool above = picture.cutAbove && height == kHighestRow;
  const bool below = picture.cutBelow && height == kLowestRow;
  return Reading{picture.VoltsAt(height), above ? '>' : below ? '<' : '='};
}

Measured Height(const Picture& picture, double lower, double upper) {
  return Reading{(upper - lower) * picture.voltsPerRow, picture.IsCut() ? '>' : '='};
}

Measured Average(const Picture& picture) {
  if (picture.IsCut()) return std::nullopt;
  double sum = 0;
  for (const double height : picture.heights) sum += picture.VoltsAt(height);
  return Reading{sum / static_cast<double>(picture.heights.size())};
}

Measured RootMeanSquare(const Picture& picture) {
  if (picture.IsCut()) return std::nullopt;
  double sum = 0;
  for (const double height : picture.heights) {
    sum += picture.VoltsAt(height) * picture.VoltsAt(height);
  }
  return Reading{std::sqrt(sum / static_cast<double>(picture.heights.size()))};
}

// A part of the amplitude, in percent.
Measured Share(const Picture& picture, double part) {
  const double amplitude = picture.top - picture.base;
  if (picture.IsCut() || amplitude < kFlat) return std::nullopt;
  return Reading{100 * part / amplitude};
}

// The mean of the usual lengths: a rest between two bursts does not count.
std::optional<double> Usual(std::vector<double> lengths) {
  if (lengths.empty()) return std::nullopt;
  const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
  std::nth_element(lengths.begin(), middle, lengths.end());
  const double median = *middle;
  std::erase_if(lengths, [&](double l) { return std::fabs(l - median) > median / 2; });
  double sum = 0;
  for (const double length : lengths) sum += length;
  return sum / static_cast<double>(lengths.size());
}

// The time from an edge to the one that comes `later` edges behind it, in samples. Of a width only
// the edges of one direction begin it.
std::optional<double> Distance(const Picture& picture, std::size_t later,
                               std::optional<bool> rising) {
  std::vector<double> lengths;
  for (std::size_t i = 0; i + later < picture.edges.size(); ++i) {
    const Edge& edge = picture.edges[i];
    if (rising && edge.rising != *rising) continue;
    lengths.push_back(picture.edges[i + later].middle - edge.middle);
  }
  return Usual(std::move(lengths));
}

Measured InSeconds(const Picture& picture, std::optional<double> samples, double shortest) {
  if (!samples) return std::nullopt;
  if (*samples < shortest) return Reading{shortest * picture.step, '<'};
  return Reading{*samples * picture.step};
}

Measured Period(const Picture& picture) {
  if (const auto period = Distance(picture, 2, std::nullopt)) {
    return InSeconds(picture, period, kSamplesPerPeriod);
  }
  // An edge whose like does not come again: the period is longer than what is seen around it.
  double seen = 0;
  for (const Edge& edge : picture.edges) {
    const double end = static_cast<double>(picture.heights.size()) - 1;
    seen = std::max({seen, edge.middle, end - edge.middle});
  }
  return seen > 0 ? Measured(Reading{seen * picture.step, '>'}) : std::nullopt;
}

Measured Frequency(const Picture& picture) {
  Measured period = Period(picture);
  if (!period) return std::nullopt;
  // A long period is a low frequency, so the sign of a limit turns around.
  constexpr std::string_view kSigns = "<=>";
  return Reading{1 / period->value, kSigns[2 - kSigns.find(period->sign)]};
}

Measured Width(const Picture& picture, bool high) {
  return InSeconds(picture, Distance(picture, 1, high), kSamplesPerStep);
}

Measured Duty(const Picture& picture, bool high) {
  const Measured period = Period(picture);
  const auto width = Distance(picture, 1, high);
  if (!period || period->sign != '=' || !width) return std::nullopt;
  return Reading{100 * *width * picture.step / period->value};
}

Measured Duration(const Picture& picture, bool rising) {
  std::vector<double> lengths;
  for (const Edge& edge : picture.edges) {
    if (edge.rising == rising && edge.duration) lengths.push_back(*edge.duration);
  }
  return InSeconds(picture, Usual(std::move(lengths)), kSamplesPerStep);
}

using Format = std::string (*)(double value, int digits);

struct Row {
  std::string_view name;
  Format format;
  Measured (*measure)(const Picture& picture);
};

using P = const Picture&;

constexpr Row kRows[] = {
    {"Vpp", FormatVolts, [](P p) { return Height(p, p.lowest, p.highest); }},
    {"Vmax", FormatVolts, [](P p) { return Level(p, p.highest); }},
    {"Vmin", FormatVolts, [](P p) { return Level(p, p.lowest); }},
    {"Vavg", FormatVolts, Average},
    {"Vtop", FormatVolts, [](P p) { return Level(p, p.top); }},
    {"Vbase", FormatVolts, [](P p) { return Level(p, p.base); }},
    {"Vrms", FormatVolts, RootMeanSquare},
    {"Freq", FormatHertz, Frequency},
    {"RiseTime", FormatSeconds, [](P p) { return Duration(p, true); }},
    {"FallTime", FormatSeconds, [](P p) { return Duration(p, false); }},
    {"Period", FormatSeconds, Period},
    {"+Width", FormatSeconds, [](P p) { return Width(p, true); }},
    {"-Width", FormatSeconds, [](P p) { return Width(p, false); }},
    {"Vovr", FormatNumber, [](P p) { return Share(p, p.highest - p.top); }},
    {"Vpre", FormatNumber, [](P p) { return Share(p, p.base - p.lowest); }},
    {"Vamp", FormatVolts, [](P p) { return Height(p, p.base, p.top); }},
    {"+Duty", FormatNumber, [](P p) { return Duty(p, true); }},
    {"-Duty", FormatNumber, [](P p) { return Duty(p, false); }},
};

// One sample of a long trace is less than four digits can show.
int DigitsFor(const Row& row, const Picture& picture) {
  constexpr std::size_t kFewSamples = 1000;
  const bool few = row.format == FormatVolts || picture.heights.size() <= kFewSamples;
  return few ? kVoltDigits : 6;
}

}  // namespace

std::optional<std::string> AnswerMeasure(std::string_view command, const Settings& settings,
                                         const Inputs& inputs, const Record& record,
                                         Channel channel) {
  constexpr std::string_view kPath = ":MEASURE:";
  if (!command.starts_with(kPath)) return std::nullopt;
  const auto row = std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& r) {
    return r.name == command.substr(kPath.size());
  });
  if (row == std::end(kRows)) return std::nullopt;
  Measured measured;
  int digits = kVoltDigits;
  if (settings.Is(OfChannel(Setting::kDisplay1, channel), "ON")) {
    const Picture picture = TakePicture(settings, inputs, record, channel);
    measured = row->measure(picture);
    digits = DigitsFor(*row, picture);
  }
  if (!measured) return std::string(row->name) + " ****";
  return std::string(row->name) + measured->sign + row->format(measured->value, digits);
}

}  // namespace tx5000

#include "Signals.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>

#include "waveview/WaveSurface.h"

namespace oriolemark {
namespace {

constexpr double kPeriods = 6;

int RowOf(Signal signal, double periods, std::uint32_t noise) {
  const double sine = std::sin(periods * 2 * std::numbers::pi);
  switch (signal) {
    case Signal::Sine:
      return 99 + static_cast<int>(80 * sine) + static_cast<int>(noise % 3);
    case Signal::Square:
      return sine < 0 ? 160 : 40;
    case Signal::Noise:
      break;
  }
  return static_cast<int>(noise % 200);
}

}  // namespace

void FillRecord(WaveRecord& record, Signal signal, int count) {
  std::mt19937 random(1);
  for (std::size_t trace = 0; trace < kTraces.size(); ++trace) {
    for (int i = 0; i <= kLastSample; ++i) {
      const double periods = kPeriods * i / count + 0.1 * static_cast<double>(trace);
      (record.*kTraces[trace])
          .Store(i, RowOf(signal, periods, static_cast<std::uint32_t>(random())));
    }
  }
  record.HasData = record.IsYT = record.Envelope = record.GridOn = record.ColorOn = true;
  record.Channels = 3;
  record.Count = count;
  record.CH1Range = record.CH2Range = "1.00V";
  record.CH1Offset = record.CH2Offset = "0.00div";
  record.TimeRange = "1.000ms";
  record.TriggerDelay = "0.0000s";
}

std::vector<Point> PointsOf(const SampleArray& samples, int count) {
  std::vector<Point> points{{0, double(samples[1])}, {1, double(samples[2])}};
  for (int k = 0; k + 3 <= kLastSample; ++k) {
    const double units = 1 + k * kGridWidth / count;
    if (units > kGridWidth) break;
    points.push_back({units, double(samples[k + 3])});
  }
  return points;
}

}  // namespace oriolemark

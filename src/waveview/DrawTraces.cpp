#include "waveview/DrawTraces.h"

#include <array>
#include <string>

#include "waveview/DrawStatus.h"

namespace oriolemark {
namespace {

constexpr int kStepPoint = 2;  // the point of a trace that step 0 of its walk shows

// The lines from point `first` of a trace to point `last`. Point i shows sample i + 1.
void DrawPiece(const WaveSurface& surface, const SampleArray& samples, const TracePlan& plan,
               std::size_t first, std::size_t last) {
  const auto rows = samples.Rows().subspan(first + 1, last - first + 1);
  surface.canvas.Trace(plan, first, {rows, surface.zoom, kMargin});
}

struct Channel {
  const char* name;
  int number;
  Color WaveColors::*color;
  SampleArray WaveRecord::*data;
  SampleArray WaveRecord::*least;
  std::string WaveRecord::*offset;
  std::string WaveRecord::*range;
};

constexpr std::array<Channel, 2> kChannels{{
    {"CH1", 1, &WaveColors::ch1, &WaveRecord::CH1Data, &WaveRecord::CH1Min, &WaveRecord::CH1Offset,
     &WaveRecord::CH1Range},
    {"CH2", 2, &WaveColors::ch2, &WaveRecord::CH2Data, &WaveRecord::CH2Min, &WaveRecord::CH2Offset,
     &WaveRecord::CH2Range},
}};

using DrawPart = void (*)(const WaveSurface&, const WaveRecord&, const Channel&);

void DrawStatusOf(const WaveSurface& surface, const WaveRecord& record, const Channel& channel) {
  DrawChannelStatus(surface, channel.name, record.*channel.offset, record.*channel.range);
}

void DrawDataOf(const WaveSurface& surface, const WaveRecord& record, const Channel& channel) {
  const SampleArray& data = record.*channel.data;
  if (record.IsScan) {
    DrawScanTrace(surface, data, record.Count, record.RollingStartPos, record.RollingEraseWidth);
    return;
  }
  DrawTrace(surface, data, record.Count);
  if (record.Envelope) DrawTrace(surface, record.*channel.least, record.Count);
}

void DrawStatusAndDataOf(const WaveSurface& surface, const WaveRecord& record,
                         const Channel& channel) {
  DrawStatusOf(surface, record, channel);
  DrawDataOf(surface, record, channel);
}

// Draws the given part of each channel in the record, in the channel's colour.
void DrawChannels(const WaveSurface& surface, const WaveRecord& record, DrawPart draw) {
  for (const Channel& channel : kChannels) {
    if (!ShowsChannel(record, channel.number)) continue;
    surface.canvas.SetColor(surface.colors.*channel.color);
    draw(surface, record, channel);
  }
}

}  // namespace

bool ShowsChannel(const WaveRecord& record, int number) {
  constexpr int kBoth = 3;
  return record.Channels == number || record.Channels == kBoth;
}

void DrawOSC(const WaveSurface& surface, const WaveRecord& record) {
  if (!record.HasData) return;
  if (!record.IsYT) {
    surface.canvas.SetColor(surface.colors.xyDots);
    DrawXYDots(surface, record.CH1Data, record.CH2Data, record.Count);
    DrawXYStatus(surface, record.CH1Range, record.CH2Range);
    return;
  }
  if (record.ColorOn) {
    DrawChannels(surface, record, DrawStatusAndDataOf);
  } else {
    // Without colours, the texts of both channels are drawn before the data of either.
    DrawChannels(surface, record, DrawStatusOf);
    DrawChannels(surface, record, DrawDataOf);
  }
  if (record.FFTOn) {
    surface.canvas.SetColor(surface.colors.spectrum);
    DrawFFT(surface, record.FFTData, record.FFTCount);
  }
  DrawTimeStatus(surface, record.TimeRange, record.TriggerDelay);
}

void DrawTrace(const WaveSurface& surface, const SampleArray& samples, int count) {
  const TracePlan& plan = surface.plans.For(count, surface.zoom);
  DrawPiece(surface, samples, plan, 0, plan.X().size() - 1);
}

void DrawFFT(const WaveSurface& surface, const SampleArray& rows, int count) {
  DrawTrace(surface, rows, count);
}

void DrawScanTrace(const WaveSurface& surface, const SampleArray& samples, int count, int start,
                   int width) {
  const TracePlan& plan = surface.plans.For(count, surface.zoom);
  DrawPiece(surface, samples, plan, 0, 1);
  const int steps = static_cast<int>(plan.X().size()) - kStepPoint;
  const auto isBlank = [&](int k) {
    const double units = TracePlans::StepUnits(k, count);
    return units >= start && units <= start + width;
  };
  // Each step draws a line from the step before it. That of the first one lies left of the trace.
  if (steps > 0 && !isBlank(0)) {
    const double before = surface.At(TracePlans::StepUnits(-1, count));
    surface.canvas.Line({before, surface.At(samples[2])}, {surface.At(1), surface.At(samples[3])});
  }
  // Lines between two gaps form one piece.
  int piece = 0;
  for (int k = 1; k <= steps; ++k) {
    if (k < steps && !isBlank(k)) continue;
    if (k - 1 > piece) DrawPiece(surface, samples, plan, piece + kStepPoint, k - 1 + kStepPoint);
    piece = k;
  }
}

void DrawXYDots(const WaveSurface& surface, const SampleArray& ch1, const SampleArray& ch2,
                int count) {
  // A high voltage has a low row number. It is drawn at the right.
  constexpr int kRightmost = 249;
  for (int i = 1; i < count && SampleArray::Holds(i); ++i) {
    surface.canvas.Pixel({surface.At(kRightmost - ch1[i]), surface.At(ch2[i])});
  }
}

}  // namespace oriolemark

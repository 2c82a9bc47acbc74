#include "waveview/DrawTraces.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "waveview/DrawStatus.h"

namespace oriolemark {
namespace {

// The points of a trace along the grid. The first two points are one grid unit apart, whatever the
// count. Each later sample is 300 / count units further right. Positions are compared before the
// zoom, so that the number of points does not depend on it.
class TraceWalk {
 public:
  TraceWalk(const WaveSurface& surface, const SampleArray& samples, int count)
      : surface_(surface), samples_(samples), count_(count) {}

  // Number of steps k = 0, 1, ... to draw. Step k shows sample k + 3.
  int Steps() const {
    if (count_ <= 0) return 0;
    const double steps = (kGridWidth - 1) * count_ / kGridWidth;
    return static_cast<int>(std::min(steps, double{kLastSample - kFirstWalked})) + 1;
  }
  // Position of step k in grid units. k starts at -1.
  double Units(int k) const { return 1 + k * kGridWidth / count_; }
  // The point of step k. k starts at -1.
  Point At(int k) const { return {surface_.At(Units(k)), Row(k + kFirstWalked)}; }
  double Row(int index) const { return surface_.At(samples_[index]); }

 private:
  static constexpr int kFirstWalked = 3;

  const WaveSurface surface_;
  const SampleArray& samples_;
  int count_;
};

std::array<Point, 2> FirstSegment(const WaveSurface& surface, const TraceWalk& walk) {
  return {{{kMargin, walk.Row(1)}, {surface.At(1), walk.Row(2)}}};
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
  const TraceWalk walk(surface, samples, count);
  const std::array<Point, 2> first = FirstSegment(surface, walk);
  const int steps = walk.Steps();
  std::vector<Point> points(first.size() + static_cast<std::size_t>(steps));
  Point* next = std::copy(first.begin(), first.end(), points.data());
  for (int k = 0; k < steps; ++k) *next++ = walk.At(k);
  surface.canvas.Polyline(points);
}

void DrawFFT(const WaveSurface& surface, const SampleArray& rows, int count) {
  DrawTrace(surface, rows, count);
}

void DrawScanTrace(const WaveSurface& surface, const SampleArray& samples, int count, int start,
                   int width) {
  const TraceWalk walk(surface, samples, count);
  surface.canvas.Polyline(FirstSegment(surface, walk));
  // Each step draws a line from the step before it. Lines between two gaps form one piece.
  std::vector<Point> piece;
  const auto endPiece = [&surface, &piece] {
    surface.canvas.Polyline(piece);
    piece.clear();
  };
  const int steps = walk.Steps();
  for (int k = 0; k < steps; ++k) {
    const double units = walk.Units(k);
    if (units >= start && units <= start + width) {
      endPiece();
      continue;
    }
    if (piece.empty()) piece.push_back(walk.At(k - 1));
    piece.push_back(walk.At(k));
  }
  endPiece();
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

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <cmath>
#include <random>

#include "Desk.h"
#include "desktop/WavePictureWidget.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {
namespace {

constexpr std::array kTraces{&WaveRecord::CH1Data, &WaveRecord::CH1Min, &WaveRecord::CH2Data,
                             &WaveRecord::CH2Min};

// An envelope of both channels with a signal far faster than the sweep. It looks like a band.
void FillRecord(WaveRecord& record, int count) {
  std::mt19937 random(1);
  for (std::size_t trace = 0; trace < kTraces.size(); ++trace) {
    for (int i = 0; i <= kLastSample; ++i) {
      const double sine = 80 * std::sin(i * (0.7 + 0.1 * static_cast<double>(trace)));
      const int noise = static_cast<int>(random() % 9) - 4;
      (record.*kTraces[trace]).Store(i, 100 + static_cast<int>(sine) + noise);
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

// The window's own repaint after a resize: grid, traces and texts.
void RepaintView(benchmark::State& state) {
  InstantLine line;
  Desk desk(line, line);
  frmWave view({desk.sheet, desk.scratch, desk.controls, desk.progress, desk.refreshContext},
               MakeRasterCanvas(), {{desk.prompts, {}}, {}, [] { return nullptr; }});
  FillRecord(desk.sheet.Waves[0], static_cast<int>(state.range(1)));
  view.SetTag("0");
  view.NoteInnerSize(PixelsToUnits(700), PixelsToUnits(500));
  view.Load();
  view.Timer1_Timer();
  view.ZoomCombo.SetText(std::to_string(state.range(0)) + "%");
  view.ZoomFactor = static_cast<double>(state.range(0)) / 100;
  for (auto _ : state) view.Form_Resize();
}

// The traces alone, drawn by the toolkit.
void DrawPolyline(benchmark::State& state) {
  WaveRecord record;
  const int count = static_cast<int>(state.range(1));
  FillRecord(record, count);
  const double zoom = static_cast<double>(state.range(0)) / 100;
  std::array<QPolygonF, kTraces.size()> lines;
  for (std::size_t trace = 0; trace < kTraces.size(); ++trace) {
    for (int i = 1; i <= count; ++i) {
      lines[trace] << QPointF(kMargin + i * kGridWidth / count * zoom,
                              kMargin + (record.*kTraces[trace])[i] * zoom);
    }
  }
  QImage image(static_cast<int>(kPictureWidth * zoom), static_cast<int>(kPictureHeight * zoom),
               QImage::Format_RGB32);
  for (auto _ : state) {
    QPainter painter(&image);
    painter.setPen(Qt::yellow);
    for (const QPolygonF& points : lines) painter.drawPolyline(points);
  }
}

BENCHMARK(RepaintView)->Args({150, 4000})->Args({150, 17000})->Args({500, 17000});
BENCHMARK(DrawPolyline)->Args({150, 17000})->Args({500, 17000});

}  // namespace
}  // namespace oriolemark

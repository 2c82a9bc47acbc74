#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <numeric>

#include "Desk.h"
#include "Signals.h"
#include "drivers/PictureText.h"
#include "platform/Keys.h"
#include "waveview/WaveSurface.h"

#ifdef HAVE_PLOTTING_WIDGET
#include <qcustomplot.h>
#endif

namespace oriolemark {
namespace {

// The arguments of a benchmark: the zoom in percent, and the samples of a trace.
double ZoomOf(const benchmark::State& state) {
  return static_cast<double>(state.range(0)) / 100;
}
int CountOf(const benchmark::State& state) {
  return static_cast<int>(state.range(1));
}

QSize PictureSize(double zoom) {
  return {static_cast<int>(kPictureWidth * zoom), static_cast<int>(kPictureHeight * zoom)};
}

// The wave view of the program, in a window with so much room for the picture.
struct OpenView {
  OpenView(const benchmark::State& state, Signal signal, QSize room) {
    FillRecord(record, signal, CountOf(state));
    view.SetTag("0");
    view.NoteInnerSize(frmWave::kLeastStrip + PixelsToUnits(room.width()),
                       100 + PixelsToUnits(room.height()));
    view.Load();
    view.Timer1_Timer();
    view.ZoomCombo.EndEdit(std::to_string(state.range(0)) + "%");
  }
  // All of it: grid, texts and traces. The record changes, so that no kept picture can serve.
  void Repaint() {
    record.CH1Data.Store(1, record.CH1Data[1] ^ 1);
    view.Form_Resize();
  }

  InstantLine line;
  Desk desk{line, line};
  WaveRecord& record = desk.sheet.Waves[0];
  frmWave view{{desk.sheet, desk.scratch, desk.controls, desk.progress, desk.refreshContext},
               MakeRasterCanvas(),
               {{desk.prompts, {}}, {}, [] { return nullptr; }}};
};

// In a window that shows the whole picture.
void Repaint(benchmark::State& state, Signal signal) {
  OpenView open(state, signal, PictureSize(ZoomOf(state)));
  for (auto _ : state) open.Repaint();
}

// In the same window at every zoom.
void RepaintShown(benchmark::State& state, Signal signal) {
  OpenView open(state, signal, {1000, 700});
  for (auto _ : state) open.Repaint();
}

// One step of a cursor by its key, all four cursors shown. It walks from edge to edge, so that
// every step has other read-outs.
void StepCursor(benchmark::State& state, Signal signal) {
  OpenView open(state, signal, PictureSize(ZoomOf(state)));
  open.view.ChkCursorX.SetValue(true);
  open.view.ChkCursorY.SetValue(true);
  int key = kLeftKey;
  for (auto _ : state) {
    open.view.WavePic_KeyDown(key, 0);
    if (open.view.Cursors.X1Base <= 0) key = kRightKey;
    if (open.view.Cursors.X1Base >= kGridWidth) key = kLeftKey;
  }
}

// The traces alone, drawn by the toolkit.
void DrawPolyline(benchmark::State& state, Signal signal) {
  const double zoom = ZoomOf(state);
  WaveRecord record;
  FillRecord(record, signal, CountOf(state));
  std::array<QPolygonF, kTraces.size()> lines;
  for (std::size_t trace = 0; trace < kTraces.size(); ++trace) {
    for (const Point at : PointsOf(record.*kTraces[trace], record.Count)) {
      lines[trace] << QPointF(kMargin + at.x * zoom, kMargin + at.y * zoom);
    }
  }
  QImage image(PictureSize(zoom), QImage::Format_RGB32);
  for (auto _ : state) {
    QPainter painter(&image);
    painter.setPen(Qt::yellow);
    for (const QPolygonF& points : lines) painter.drawPolyline(points);
  }
}

// The least that every repaint does: clears the picture, and passes over the samples once.
void TouchMemory(benchmark::State& state, Signal signal) {
  WaveRecord record;
  FillRecord(record, signal, CountOf(state));
  const QSize size = PictureSize(ZoomOf(state));
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size.width()) * size.height());
  std::array<std::vector<std::int32_t>, kTraces.size()> samples;
  for (std::size_t trace = 0; trace < kTraces.size(); ++trace) {
    for (int i = 0; i < record.Count; ++i) {
      samples[trace].push_back((record.*kTraces[trace])[i]);
    }
  }
  for (auto _ : state) {
    std::fill(pixels.begin(), pixels.end(), 0xFF000000U);
    benchmark::DoNotOptimize(pixels.data());
    for (const auto& rows : samples) {
      benchmark::DoNotOptimize(std::accumulate(rows.begin(), rows.end(), 0));
    }
    benchmark::ClobberMemory();
  }
}

#ifdef HAVE_PLOTTING_WIDGET
// A plotting widget with the same traces, aliased lines and no more than its own axes and grid.
void DrawPlot(benchmark::State& state, Signal signal) {
  WaveRecord record;
  FillRecord(record, signal, CountOf(state));
  QCustomPlot plot;
  plot.setNotAntialiasedElements(QCP::aeAll);
  plot.setViewport(QRect(QPoint(), PictureSize(ZoomOf(state))));
  plot.xAxis->setRange(0, kGridWidth);
  plot.yAxis->setRange(0, kGridHeight);
  for (const auto& trace : kTraces) {
    QVector<double> across, up;
    for (const Point at : PointsOf(record.*trace, record.Count)) {
      across << at.x;
      up << kGridHeight - at.y;
    }
    plot.addGraph()->setData(across, up, true);
  }
  for (auto _ : state) plot.replot(QCustomPlot::rpQueuedRefresh);
}
#endif

void EverySize(benchmark::internal::Benchmark* bench) {
  bench->ArgsProduct({{150, 500, 1000}, {600, 4000, 17000}})->MinTime(0.01);
}

#define ON_EVERY_SIGNAL(function)                                        \
  BENCHMARK_CAPTURE(function, sine, Signal::Sine)->Apply(EverySize);     \
  BENCHMARK_CAPTURE(function, square, Signal::Square)->Apply(EverySize); \
  BENCHMARK_CAPTURE(function, noise, Signal::Noise)->Apply(EverySize)

ON_EVERY_SIGNAL(Repaint);
ON_EVERY_SIGNAL(DrawPolyline);
ON_EVERY_SIGNAL(TouchMemory);
#ifdef HAVE_PLOTTING_WIDGET
ON_EVERY_SIGNAL(DrawPlot);
#endif
BENCHMARK_CAPTURE(RepaintShown, sine, Signal::Sine)->ArgsProduct({{500, 1000}, {17000}});
BENCHMARK_CAPTURE(StepCursor, sine, Signal::Sine)->ArgsProduct({{500}, {600, 17000}});

}  // namespace
}  // namespace oriolemark

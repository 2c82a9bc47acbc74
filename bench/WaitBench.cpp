#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include "Desk.h"
#include "drivers/QtEventSource.h"

namespace oriolemark {
namespace {

constexpr int kWatched = 1000;  // ms

// An automatic refresh that reads nothing, so that only the waiting is left.
void WaitForRefresh(benchmark::State& state) {
  QtEventSource events;
  InstantLine line;
  Desk desk(events, line);
  Form view;
  view.Load();
  Button command([] {});
  int readings = 0;
  RefreshLoop loop(desk.refreshContext, ItemKind::Wave, view, command, [&] { ++readings; });
  Timer end(events, kWatched, [&] { desk.flags.WaveAutoRefresh = false; });
  for (auto _ : state) {
    end.SetEnabled(true);
    loop.Click();
    end.SetEnabled(false);
  }
  if (readings < 5) std::abort();
}

// The same second in a plain loop over the pump.
void SpinOverPump(benchmark::State& state) {
  QtEventSource events;
  bool ended = false;
  Timer tick(events, 100, [] {});
  Timer end(events, kWatched, [&] { ended = true; });
  tick.SetEnabled(true);
  for (auto _ : state) {
    ended = false;
    end.SetEnabled(true);
    while (!ended) QCoreApplication::processEvents();
    end.SetEnabled(false);
  }
}

BENCHMARK(WaitForRefresh)->Iterations(1)->MeasureProcessCPUTime();
BENCHMARK(SpinOverPump)->Iterations(1)->MeasureProcessCPUTime();

}  // namespace
}  // namespace oriolemark

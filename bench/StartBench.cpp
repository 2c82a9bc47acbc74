#include <benchmark/benchmark.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>

#include "Simulator.h"

namespace oriolemark {
namespace {

enum class Until { Shown, AtRest };

constexpr int kLongestStart = 20000;  // ms

// The settings of a program that connects to a simulated instrument by itself.
void WriteSettings(const Simulator& simulator) {
  QDir(simulator.Folder()).mkdir("Oriolemark");
  QFile settings(simulator.Folder() + "/Oriolemark/Oriolemark.ini");
  if (!settings.open(QIODevice::WriteOnly)) std::abort();
  settings.write(
      "[%General]\nStartupCheckHardware=True\n[IO%20Settings]\nScopeIOType=2\n"
      "COM_Port=1\nBaudRate=115200\n[Drivers]\nCOM1=\"" +
      simulator.Line().toUtf8() + "\"\n");
}

// Starts a program until it has told about itself: how long it took, what of the processor, and how
// much memory is its own.
void Start(benchmark::State& state, const char* program, const QString& folder, Until until) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_QPA_PLATFORM", "offscreen");
  environment.insert("XDG_CONFIG_HOME", folder);
  environment.insert("XDG_DATA_HOME", folder);
  if (until == Until::AtRest) environment.insert("REST_WHEN_SHOWN", "1");
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  QElapsedTimer time;
  time.start();
  process.start(program, {});
  const bool told = process.waitForReadyRead(kLongestStart);
  state.SetIterationTime(static_cast<double>(time.nsecsElapsed()) / 1e9);
  const QList<QByteArray> words = process.readAll().simplified().split(' ');
  process.waitForFinished();
  if (!told || words.size() != 2) return state.SkipWithError("the program did not start");
  state.counters["processor"] = words[0].toDouble();
  state.counters["private"] = words[1].toDouble();
}

void StartEmptyWindow(benchmark::State& state) {
  const QTemporaryDir folder;
  for (auto _ : state) Start(state, EMPTY_WINDOW, folder.path(), Until::Shown);
}

void StartProgram(benchmark::State& state) {
  const QTemporaryDir folder;
  for (auto _ : state) Start(state, WATCHED_PROGRAM, folder.path(), Until::Shown);
}

void RestEmptyWindow(benchmark::State& state) {
  const QTemporaryDir folder;
  for (auto _ : state) Start(state, EMPTY_WINDOW, folder.path(), Until::AtRest);
}

void RestConnected(benchmark::State& state) {
  const Simulator simulator;
  WriteSettings(simulator);
  for (auto _ : state) Start(state, WATCHED_PROGRAM, simulator.Folder(), Until::AtRest);
}

BENCHMARK(StartEmptyWindow)->Iterations(1)->UseManualTime();
BENCHMARK(StartProgram)->Iterations(1)->UseManualTime();
BENCHMARK(RestEmptyWindow)->Iterations(1)->UseManualTime();
BENCHMARK(RestConnected)->Iterations(1)->UseManualTime();

}  // namespace
}  // namespace oriolemark

#include <benchmark/benchmark.h>
#include <poll.h>

#include <QElapsedTimer>
#include <QProcess>
#include <cstdlib>

#include "simulator/program/PseudoTerminal.h"

namespace oriolemark {
namespace {

constexpr int kLongestStart = 20000;  // ms

// Starts a program until its first byte is on the line. `arguments` get the path of the line.
void StartToFirstByte(benchmark::State& state, const char* program, const QStringList& arguments) {
  for (auto _ : state) {
    std::string error;
    const auto line = PseudoTerminal::Open("", error);
    if (!line) return state.SkipWithError(error.c_str());
    QStringList words = arguments;
    words.replaceInStrings("LINE", QString::fromStdString(line->Path()));
    QProcess process;
    QElapsedTimer time;
    time.start();
    process.start(program, words);
    pollfd bytes{line->Descriptor(), POLLIN, 0};
    const bool came = poll(&bytes, 1, kLongestStart) == 1;
    state.SetIterationTime(static_cast<double>(time.nsecsElapsed()) / 1e9);
    process.kill();
    process.waitForFinished();
    if (!came) return state.SkipWithError("no byte came");
  }
}

void CallToFirstByte(benchmark::State& state) {
  StartToFirstByte(state, CALLED_PROGRAM, {"--link", "serial:LINE@115200", "force"});
}

void PortToFirstByte(benchmark::State& state) {
  StartToFirstByte(state, OPEN_PORT, {"LINE"});
}

BENCHMARK(CallToFirstByte)->Iterations(1)->UseManualTime();
BENCHMARK(PortToFirstByte)->Iterations(1)->UseManualTime();

}  // namespace
}  // namespace oriolemark

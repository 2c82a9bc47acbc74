#include <benchmark/benchmark.h>

#include <sstream>

#include "Desk.h"

namespace oriolemark {
namespace {

std::string MakeBlock(std::int64_t count) {
  std::string block;
  for (std::int64_t i = 0; i < count; ++i) block += "0x7D ";
  return block + '\n';
}

std::string AnswerOf(std::string_view command, const std::string& size, const std::string& block) {
  if (command.ends_with("WinMemSize:?")) return size;
  if (command.ends_with("FORMAT:?")) return "Y-T\n";
  if (command == ":DATA:CHANNEL1") return block;
  return "OFF\n";
}

// A whole wave read over a line that takes no time: the queries, and a block that is collected,
// split, clamped and stored.
void ReadBlock(benchmark::State& state) {
  InstantLine line;
  Desk desk(line, line);
  const std::string block = MakeBlock(state.range(0));
  const std::string size = std::to_string(state.range(0)) + '\n';
  line.answer = [&](std::string_view command) { return AnswerOf(command, size, block); };
  for (auto _ : state) desk.reader.ReadWaveform("CH1");
  if (desk.sheet.Waves[0].CH1Data[static_cast<int>(state.range(0))] != 0x7D - 26) std::abort();
  state.counters["tokens"] = static_cast<double>(state.range(0));
}

void ExtractStream(benchmark::State& state) {
  const std::string block = MakeBlock(state.range(0));
  for (auto _ : state) {
    SampleArray samples;
    std::istringstream stream(block);
    stream.unsetf(std::ios::basefield);  // the prefix selects hexadecimal
    int byte = 0;
    for (int i = 1; stream >> byte; ++i) samples.Store(i, byte);
    benchmark::DoNotOptimize(samples[1]);
  }
}

BENCHMARK(ReadBlock)->Arg(600)->Arg(17000);
BENCHMARK(ExtractStream)->Arg(17000);

}  // namespace
}  // namespace oriolemark

#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <utility>

#include "Desk.h"
#include "datasheet/records/DataSheetFile.h"
#include "desktop/Program.h"

namespace oriolemark {
namespace {

constexpr SampleArray WaveRecord::*kTraces[] = {&WaveRecord::CH1Data, &WaveRecord::CH1Min,
                                                &WaveRecord::CH2Data, &WaveRecord::CH2Min};

bool NoSync(std::FILE*) {
  return true;
}

// Waves as large as they can be, of an envelope over both channels, and their files.
struct Sheet {
  explicit Sheet(std::int64_t waves) {
    std::mt19937 random;
    sheet.WaveCount = static_cast<int>(waves);
    for (WaveRecord& wave : sheet.Waves) {
      wave.HasData = wave.IsYT = wave.Envelope = true;
      wave.Channels = 3;
      wave.Count = kLastSample;
      for (const auto trace : kTraces) {
        for (int i = 0; i <= kLastSample; ++i) {
          (wave.*trace).Store(i, static_cast<int>(random() % 200));
        }
      }
    }
    std::filesystem::create_directory(folder);
  }
  ~Sheet() { std::filesystem::remove_all(folder); }
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  // Passes each sample of the waves in the order of the file.
  template <typename Pass>
  void Walk(const Pass& pass) {
    for (int slot = 0; slot < sheet.WaveCount; ++slot) {
      WaveRecord& wave = sheet.Waves[static_cast<std::size_t>(slot)];
      for (int i = 0; i <= kLastSample; ++i) {
        for (const auto trace : kTraces) pass(wave.*trace, i);
      }
    }
  }
  void Insert() {
    std::ofstream stream(samples, std::ios::binary);
    Walk([&](const SampleArray& trace, int i) { stream << trace[i] << "\r\n"; });
  }
  void CountLines(benchmark::State& state) {
    state.counters["lines"] = 4.0 * (kLastSample + 1) * sheet.WaveCount;
  }

  DataSheet sheet;
  TransferScratch scratch;
  FatalPrompts prompts;
  const std::string folder = std::filesystem::temp_directory_path() / "oriolemark_bench.sheet";
  const std::string path = folder + "/a.orm";
  const std::string samples = folder + "/samples";
};

void ReadSheet(benchmark::State& state) {
  Sheet full(state.range(0));
  WriteDataSheet(full.path, full.sheet, full.prompts, NoSync);
  SampleArray& trace = full.sheet.Waves[0].CH2Min;
  const std::int32_t last = std::exchange(trace, {})[kLastSample];
  for (auto _ : state) ReadDataSheet(full.path, full.sheet, full.scratch, full.prompts);
  if (trace[kLastSample] != last) std::abort();
  full.CountLines(state);
}

void ExtractSheet(benchmark::State& state) {
  Sheet full(state.range(0));
  full.Insert();
  for (auto _ : state) {
    std::ifstream stream(full.samples, std::ios::binary);
    full.Walk([&](SampleArray& trace, int i) {
      std::int32_t row = 0;
      stream >> row;
      trace.Store(i, row);
    });
    if (!stream) std::abort();
  }
  full.CountLines(state);
}

void WriteSheet(benchmark::State& state) {
  Sheet full(state.range(0));
  for (auto _ : state) WriteDataSheet(full.path, full.sheet, full.prompts, NoSync);
  full.CountLines(state);
}

void InsertSheet(benchmark::State& state) {
  Sheet full(state.range(0));
  for (auto _ : state) full.Insert();
  full.CountLines(state);
}

// The whole program opens the sheet with all views, down to the pixels.
void OpenSheet(benchmark::State& state) {
  Sheet full(state.range(0));
  WriteDataSheet(full.path, full.sheet, full.prompts, NoSync);
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(full.folder));
  Program program(static_cast<QApplication&>(*QCoreApplication::instance()));
  MainModule& module = program.Module();
  module.main.Load();
  module.main.Show();
  const auto pending = [&] {
    return std::ranges::any_of(module.sheet.WaveViews, [](const auto& view) {
      return view && dynamic_cast<const frmWave&>(*view).InitPending;
    });
  };
  for (auto _ : state) {
    module.browser.OpenDataSheet(full.path);
    while (pending()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
  }
  full.CountLines(state);
}

BENCHMARK(OpenSheet)->Arg(18);
BENCHMARK(ReadSheet)->Arg(1)->Arg(18);
BENCHMARK(ExtractSheet)->Arg(18);
BENCHMARK(WriteSheet)->Arg(1)->Arg(18);
BENCHMARK(InsertSheet)->Arg(18);

}  // namespace
}  // namespace oriolemark

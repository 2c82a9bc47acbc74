#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

// Private memory is known of a benchmark that starts a program.
enum class Figure { Wall, Processor, PrivateMemory };
enum class Take { Least, Median };

// One row of the table: the measured work, the comparison, and the highest ratio.
struct Row {
  const char* subject;
  const char* measured;
  const char* reference;
  Figure figure;
  Take take;
  double scale;  // the ratio of the amounts of work
  double bound;
};

// For a ratio that is only printed.
constexpr double kNoBound = std::numeric_limits<double>::infinity();

constexpr std::array kRows{
    Row{"sine, 4 x 17000, 150 % / drawPolyline", "Repaint/sine/150/17000",
        "DrawPolyline/sine/150/17000", Figure::Processor, Take::Median, 1, 0.03},
    Row{"sine, 4 x 17000, 500 % / drawPolyline", "Repaint/sine/500/17000",
        "DrawPolyline/sine/500/17000", Figure::Processor, Take::Median, 1, 0.10},
    Row{"sine, 4 x 600, 150 % / drawPolyline", "Repaint/sine/150/600", "DrawPolyline/sine/150/600",
        Figure::Processor, Take::Median, 1, 0.35},
    Row{"sine, 4 x 600, 500 % / drawPolyline", "Repaint/sine/500/600", "DrawPolyline/sine/500/600",
        Figure::Processor, Take::Median, 1, 0.50},
    Row{"sine, 4 x 17000, 150 % / plotting widget", "Repaint/sine/150/17000",
        "DrawPlot/sine/150/17000", Figure::Processor, Take::Median, 1, 0.30},
    Row{"sine, 4 x 17000, 500 % / plotting widget", "Repaint/sine/500/17000",
        "DrawPlot/sine/500/17000", Figure::Processor, Take::Median, 1, 0.25},
    Row{"sine, 4 x 600, 150 % / plotting widget", "Repaint/sine/150/600", "DrawPlot/sine/150/600",
        Figure::Processor, Take::Median, 1, 0.35},
    Row{"sine, 4 x 600, 500 % / plotting widget", "Repaint/sine/500/600", "DrawPlot/sine/500/600",
        Figure::Processor, Take::Median, 1, 0.50},
    Row{"noise / sine, 4 x 17000, 500 %", "Repaint/noise/500/17000", "Repaint/sine/500/17000",
        Figure::Processor, Take::Median, 1, 5},
    Row{"sine, 150 %: 17000 samples / 4000", "Repaint/sine/150/17000", "Repaint/sine/150/4000",
        Figure::Processor, Take::Median, 1, 2.3},
    Row{"sine, 1000 % / 500 % in the same window", "RepaintShown/sine/1000/17000",
        "RepaintShown/sine/500/17000", Figure::Processor, Take::Median, 1, 1.5},
    Row{"step of a cursor / repaint, 4 x 17000, 500 %", "StepCursor/sine/500/17000",
        "Repaint/sine/500/17000", Figure::Processor, Take::Median, 1, 0.4},
    Row{"step of a cursor / repaint, 4 x 600, 500 %", "StepCursor/sine/500/600",
        "Repaint/sine/500/600", Figure::Processor, Take::Median, 1, 0.4},
    Row{"block of 17000 tokens / istringstream", "ReadBlock/17000", "ExtractStream/17000",
        Figure::Processor, Take::Least, 1, 0.08},
    Row{"processor of a read of 17000 over USB / over serial", "ReadOver/usb", "ReadOver/serial",
        Figure::Processor, Take::Median, 1, 7},
    Row{"processor of a read of 17000 over GPIB / over serial", "ReadOver/gpib", "ReadOver/serial",
        Figure::Processor, Take::Median, 1, 7},
    Row{"private memory, connected at rest / empty window", "RestConnected", "RestEmptyWindow",
        Figure::PrivateMemory, Take::Median, 1, 3},
    Row{"processor of a start to main window / empty window", "StartProgram", "StartEmptyWindow",
        Figure::Processor, Take::Median, 1, 2.2},
    Row{"time of a start to main window / empty window", "StartProgram", "StartEmptyWindow",
        Figure::Wall, Take::Median, 1, 2.2},
    Row{"a call to its first byte / a program with that port", "CallToFirstByte", "PortToFirstByte",
        Figure::Wall, Take::Median, 1, 3},
    Row{"a token of 17000 / a token of 600", "ReadBlock/17000", "ReadBlock/600", Figure::Processor,
        Take::Least, 17000.0 / 600, 1.3},
    Row{"processor of a waiting refresh / of a spinning one", "WaitForRefresh", "SpinOverPump",
        Figure::Processor, Take::Median, 1, 0.03},
    Row{"processor of a frozen panel / of a spinning one", "WaitFrozen", "SpinOverPump",
        Figure::Processor, Take::Median, 1, 0.005},
    Row{"frame of the screen in its window / 76800 x setPixel", "DrawFrame", "SetPixels",
        Figure::Processor, Take::Least, 1, 0.15},
    Row{"table of 17000 samples to its first paint / QTableWidget", "ShowTable/17000",
        "FillTableWidget/17000", Figure::Processor, Take::Least, 1, 0.15},
    Row{"table of 17000 samples / of 1200", "ShowTable/17000", "ShowTable/1200", Figure::Processor,
        Take::Least, 1, 1.5},
    Row{"export of 17000 rows / a stream, line by line", "ExportTable", "StreamTable",
        Figure::Processor, Take::Least, 1, 0.5},
    Row{"85 KB over a pty on one core / blocking read", "AskOverLine", "ReadOverLine", Figure::Wall,
        Take::Median, 1, 2},
    Row{"read of a sheet of 1.2 million samples / ifstream >>", "ReadSheet/18", "ExtractSheet/18",
        Figure::Processor, Take::Least, 1, 0.25},
    Row{"write of a sheet of 1.2 million samples / ofstream <<", "WriteSheet/18", "InsertSheet/18",
        Figure::Processor, Take::Least, 1, 0.20},
    Row{"read of a wave of 18 / of a single one", "ReadSheet/18", "ReadSheet/1", Figure::Processor,
        Take::Least, 18, 1.3},
    Row{"write of a wave of 18 / of a single one", "WriteSheet/18", "WriteSheet/1",
        Figure::Processor, Take::Least, 18, 1.3},
    Row{"opening that sheet with all views / reading it", "OpenSheet/18", "ReadSheet/18",
        Figure::Processor, Take::Least, 1, kNoBound},
};

// The usual report. It also keeps the figures of every repetition.
class KeepingReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      failed_ = failed_ || run.error_occurred;
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const auto& [function, args] = std::tie(run.run_name.function_name, run.run_name.args);
      const std::string name = args.empty() ? function : function + "/" + args;
      const double turns = static_cast<double>(run.iterations);
      const auto keep = [&](Figure figure, double value) {
        figures_[{name, figure}].push_back(value);
      };
      // The processor time of a program that was started is its own.
      const auto started = run.counters.find("processor");
      keep(Figure::Wall, run.real_accumulated_time / turns);
      keep(Figure::Processor, started != run.counters.end() ? double{started->second.value}
                                                            : run.cpu_accumulated_time / turns);
      const auto memory = run.counters.find("private");
      if (memory != run.counters.end()) keep(Figure::PrivateMemory, memory->second.value);
    }
    ConsoleReporter::ReportRuns(runs);
  }

  // A benchmark could not be run.
  bool Failed() const { return failed_; }

  std::optional<double> Value(const char* name, Figure figure, Take take) const {
    const auto found = figures_.find({name, figure});
    if (found == figures_.end()) return std::nullopt;
    std::vector<double> values = found->second;
    std::sort(values.begin(), values.end());
    return take == Take::Least ? values.front() : values[values.size() / 2];
  }

 private:
  bool failed_ = false;
  std::map<std::pair<std::string, Figure>, std::vector<double>> figures_;
};

// Returns false if a bound is broken. A row with a benchmark left out by a filter counts as kept.
bool PrintTable(const KeepingReporter& reporter) {
  bool kept = true;
  std::printf("\n%-56s %8s %8s  %s\n", "Ratio", "is", "at most", "met");
  for (const Row& row : kRows) {
    const auto measured = reporter.Value(row.measured, row.figure, row.take);
    const auto reference = reporter.Value(row.reference, row.figure, row.take);
    if (!measured || !reference) {
      std::printf("%-56s %8s %8.3f\n", row.subject, "not run", row.bound);
      continue;
    }
    const double ratio = *measured / *reference / row.scale;
    const bool met = ratio <= row.bound;
    std::printf("%-56s %8.4f %8.3f  %s\n", row.subject, ratio, row.bound, met ? "yes" : "NO");
    kept = kept && met;
  }
  return kept;
}

// The repaint on every signal, without bounds, beside each thing that it can be measured by. The
// last column is the time of the memory alone.
void PrintRepaints(const KeepingReporter& reporter) {
  std::printf("\n%-32s %12s %12s %12s\n", "Repaint, with 4 traces", "drawPolyline", "plot",
              "memory");
  for (const char* signal : {"sine", "square", "noise"}) {
    for (const char* zoom : {"150", "500", "1000"}) {
      for (const char* count : {"600", "4000", "17000"}) {
        const std::string size = std::string("/") + signal + "/" + zoom + "/" + count;
        const auto time = [&](const char* what) {
          return reporter.Value((what + size).c_str(), Figure::Processor, Take::Median);
        };
        const auto repaint = time("Repaint");
        if (!repaint) continue;
        std::printf("%-32s", size.c_str() + 1);
        for (const char* other : {"DrawPolyline", "DrawPlot", "TouchMemory"}) {
          const auto reference = time(other);
          std::printf(" %12.3f", reference ? *repaint / *reference : std::nan(""));
        }
        std::printf("\n");
      }
    }
  }
}

void PrintHelp() {
  std::printf(
      "oriolemark_bench measures Oriolemark against plain ways of doing the same, and ends with a\n"
      "table of the ratios. The exit code is 1 when one is above its bound. The bounds hold for a\n"
      "release build. Without options each benchmark is repeated and interleaved with the others.\n"
      "\n");
  benchmark::PrintDefaultHelp();
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The defaults come first, so that the user's options override them.
  std::array<std::string, 3> defaults{"--benchmark_repetitions=11", "--benchmark_min_time=0.05",
                                      "--benchmark_enable_random_interleaving=true"};
  std::vector<char*> options{argv[0]};
  for (std::string& option : defaults) options.push_back(option.data());
  options.insert(options.end(), argv + 1, argv + argc);
  int count = static_cast<int>(options.size());
  options.push_back(nullptr);
  benchmark::Initialize(&count, options.data(), PrintHelp);
  if (benchmark::ReportUnrecognizedArguments(count, options.data())) return 2;
  const QApplication application(count, options.data());
  KeepingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  PrintRepaints(reporter);
  const bool kept = PrintTable(reporter) && !reporter.Failed();
  benchmark::Shutdown();
  return kept ? 0 : 1;
}

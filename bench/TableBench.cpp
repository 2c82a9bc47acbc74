#include <benchmark/benchmark.h>

#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <fstream>
#include <random>

#include "Desk.h"
#include "datasheet/SampleTable.h"
#include "datasheet/frmData.h"
#include "desktop/ListBinding.h"

namespace oriolemark {
namespace {

constexpr QSize kTableSize(640, 480);

void FillRecord(DataRecord& record, int count) {
  std::mt19937 random(1);
  record.Samples.resize(kLastSample + 1);
  const char* digits = "0123456789ABCDEF";
  for (std::string& token : record.Samples) {
    token = {'0', 'x', digits[random() % 16], digits[random() % 16]};
  }
  record.HasData = true;
  record.Title = "CH1 1.00V  1.000ms  Size=17000 [Date:01/01/26]";
  record.Count = count;
  record.VoltRange = 1;
  record.VoltOffset = 0.12;
  record.TimeRange = 0.001;
}

// Answers every file dialog with the same name.
class NamingPrompts : public FatalPrompts {
 public:
  std::string AskFileName(const FileQuestion&) override { return path; }
  std::string path;
};

// The loaded view of a table of samples.
struct TableDesk : InstantLine, Desk {
  explicit TableDesk(int count) : Desk(*this, *this) {
    FillRecord(sheet.Datas[0], count);
    view.SetTag("0");
    view.Load();
  }

  NamingPrompts naming;
  // The file stays in the system's cache, as that of a stream does.
  frmData view{{sheet, scratch, controls, progress, refreshContext},
               {naming, [](std::FILE*) { return true; }}};
};

void ShowTable(benchmark::State& state) {
  TableDesk desk(static_cast<int>(state.range(0)));
  const std::unique_ptr<QTableView> table(&MakeList("Table", "Table", desk.view.MeasureView));
  table->resize(kTableSize);
  table->show();
  for (auto _ : state) {
    desk.view.MeasureView.SetRows({});
    desk.view.LoadData();
    benchmark::DoNotOptimize(table->grab());
  }
}

// The same texts in the toolkit's own table, which keeps every cell.
void FillTableWidget(benchmark::State& state) {
  DataRecord record;
  FillRecord(record, static_cast<int>(state.range(0)));
  QTableWidget table(0, 3);
  table.resize(kTableSize);
  table.show();
  for (auto _ : state) {
    table.setRowCount(0);
    table.setRowCount(record.Count);
    for (int row = 0; row < record.Count; ++row) {
      for (int column = 0; column < 3; ++column) {
        const QString text = QString::fromStdString(SampleText(record, row + 1, column));
        table.setItem(row, column, std::make_unique<QTableWidgetItem>(text).release());
      }
    }
    benchmark::DoNotOptimize(table.grab());
  }
}

void ExportTable(benchmark::State& state) {
  const QTemporaryDir folder;
  TableDesk desk(kLastSample);
  desk.naming.path = folder.filePath("table.xls").toStdString();
  for (auto _ : state) desk.view.cmdExport.Click();
}

// The same texts through a stream that is flushed at each line.
void StreamTable(benchmark::State& state) {
  const QTemporaryDir folder;
  DataRecord record;
  FillRecord(record, kLastSample);
  for (auto _ : state) {
    std::ofstream file(folder.filePath("table.xls").toStdString(), std::ios::binary);
    for (int i = 1; i <= record.Count; ++i) {
      file << ExportedSampleText(record, i, 0) << '\t' << ExportedSampleText(record, i, 1) << '\t'
           << ExportedSampleText(record, i, 2) << "\r" << std::endl;
    }
  }
}

BENCHMARK(ShowTable)->Arg(1200)->Arg(17000);
BENCHMARK(FillTableWidget)->Arg(17000);
BENCHMARK(ExportTable);
BENCHMARK(StreamTable);

}  // namespace
}  // namespace oriolemark

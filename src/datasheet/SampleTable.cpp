#include "datasheet/SampleTable.h"

#include <algorithm>

#include "datasheet/records/WaveRecord.h"
#include "output/TextTable.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

constexpr int kMiddleRow = 125;  // the screen's middle, where a sample is at the offset
constexpr double kRowsPerDivision = 25;
// A record of the instrument's screen has 12 divisions of 100 samples. Any other is taken to have
// 200 a division.
constexpr int kScreenRecord = 1200;
constexpr double kScreenSamplesPerDivision = 100;
constexpr double kSamplesPerDivision = 200;

double VoltageOf(const DataRecord& record, int sample) {
  const int row = ConvertHexByteToNum(record.Samples[static_cast<std::size_t>(sample)]);
  return (kMiddleRow - row) * record.VoltRange / kRowsPerDivision - record.VoltOffset;
}

double TimeOf(const DataRecord& record, int sample) {
  const double perDivision =
      record.Count == kScreenRecord ? kScreenSamplesPerDivision : kSamplesPerDivision;
  return record.TriggerDelay - (record.Count / 2.0 - sample) * record.TimeRange / perDivision;
}

std::string NumberCell(const DataRecord&, int sample) {
  return std::to_string(sample);
}
std::string VoltageCell(const DataRecord& record, int sample) {
  return ConvertNumToExp2(VoltageOf(record, sample));
}
std::string TimeCell(const DataRecord& record, int sample) {
  return ConvertNumToExp4(TimeOf(record, sample));
}

// In the order of the columns.
constexpr std::string (*kCells[])(const DataRecord&, int) = {NumberCell, VoltageCell, TimeCell};

}  // namespace

int SampleCount(const DataRecord& record) {
  const int tokens =
      static_cast<int>(std::min<std::size_t>(record.Samples.size(), kLastSample + 1));
  return std::max(0, std::min(record.Count, tokens - 1));
}

std::string SampleText(const DataRecord& record, int sample, int column) {
  if (sample < 1 || sample > SampleCount(record)) return {};
  return kCells[column](record, sample);
}

std::string ExportedSampleText(const DataRecord& record, int sample, int column) {
  std::string text = SampleText(record, sample, column);
  return column == 0 ? " " + text + " " : text;
}

std::string SampleTableText(const DataRecord& record) {
  TextTable table;
  table.AddLine("Tavik Technologies -[Data]");
  table.AddEmptyLines(3);
  table.AddLine(record.HasData ? record.Title : "");
  table.AddEmptyLines(2);
  table.AddRow({kSampleColumns[0], kSampleColumns[1], kSampleColumns[2]});
  table.AddEmptyLines(1);
  const int count = record.HasData ? SampleCount(record) : 0;
  for (int i = 1; i <= count; ++i) {
    const auto cell = [&record, i](int column) { return ExportedSampleText(record, i, column); };
    table.AddRow({cell(0), cell(1), cell(2)});
  }
  return table.TakeBytes();
}

}  // namespace oriolemark

#include "waveview/WaveSamples.h"

#include <algorithm>
#include <limits>
#include <span>

#include "values/Number.h"
#include "values/StringFunc.h"
#include "waveview/DrawTraces.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {
namespace {

// The row of the offset, as in a table of samples.
constexpr int kMiddleRow = 99;

struct Trace {
  const char* name;
  int channel;
  SampleArray WaveRecord::*rows;
  std::string WaveRecord::*range;
  std::string WaveRecord::*offset;
};
using W = WaveRecord;

constexpr Trace kPlain[] = {{"CH1", 1, &W::CH1Data, &W::CH1Range, &W::CH1Offset},
                            {"CH2", 2, &W::CH2Data, &W::CH2Range, &W::CH2Offset}};
constexpr Trace kEnvelope[] = {{"CH1 max", 1, &W::CH1Data, &W::CH1Range, &W::CH1Offset},
                               {"CH1 min", 1, &W::CH1Min, &W::CH1Range, &W::CH1Offset},
                               {"CH2 max", 2, &W::CH2Data, &W::CH2Range, &W::CH2Offset},
                               {"CH2 min", 2, &W::CH2Min, &W::CH2Range, &W::CH2Offset}};

// A text that cannot be converted is not a number.
double NumberOf(const Converted& converted) {
  return converted.ConvertValid ? converted.value : std::numeric_limits<double>::quiet_NaN();
}

// An offset such as "2.00div", in divisions.
double DivisionsOf(std::string_view text) {
  if (!text.ends_with("div")) return std::numeric_limits<double>::quiet_NaN();
  return NumberInReply(text.substr(0, text.size() - 3))
      .value_or(std::numeric_limits<double>::quiet_NaN());
}

SampleColumn TimeColumn(const WaveRecord& record, int count) {
  SampleColumn column{"Time", "s", {}};
  const double step =
      NumberOf(ConvertStrToTime(record.TimeRange)) * (kGridWidth / kDivision) / std::max(count, 1);
  const double middle = NumberOf(ConvertStrToTime(record.TriggerDelay));
  for (int i = 1; i <= count; ++i) column.values.push_back(middle - (count / 2.0 - i) * step);
  return column;
}

SampleColumn VoltColumn(const WaveRecord& record, const Trace& trace, int count) {
  SampleColumn column{trace.name, "V", {}};
  const double range = NumberOf(ConvertStrToVolt(record.*trace.range));
  const double offset = DivisionsOf(record.*trace.offset) * range;
  const SampleArray& rows = record.*trace.rows;
  for (int i = 1; i <= count; ++i) {
    column.values.push_back((kMiddleRow - rows[i]) * range / kDivision - offset);
  }
  return column;
}

}  // namespace

std::vector<SampleColumn> WaveColumns(const WaveRecord& record) {
  std::vector<SampleColumn> columns;
  if (!record.HasData) return columns;
  const int count = std::clamp(record.Count, 0, kLastSample);
  if (record.IsYT) columns.push_back(TimeColumn(record, count));
  const bool envelope = record.IsYT && record.Envelope && !record.IsScan;
  for (const Trace& trace : envelope ? std::span<const Trace>(kEnvelope) : kPlain) {
    const bool shown = !record.IsYT || ShowsChannel(record, trace.channel);
    if (shown) columns.push_back(VoltColumn(record, trace, count));
  }
  return columns;
}

}  // namespace oriolemark

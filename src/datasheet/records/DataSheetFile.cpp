#include "datasheet/records/DataSheetFile.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>

#include "datasheet/records/SheetFields.h"

namespace oriolemark {
namespace {

constexpr std::string_view kSignature = "Tavik Technologies TX5000 Data Sheet";
constexpr std::size_t kMostBytes = std::size_t{256} << 20;

// The fields in the order of the file.
constexpr std::tuple kHeader{&DataSheet::Title, &DataSheet::WaveCount, &DataSheet::MeasureCount,
                             &DataSheet::DataCount};

using W = WaveRecord;
constexpr std::tuple kWaveFields{
    &W::Name,      &W::HasData,   &W::BestFitOn,   &W::GridOn,          &W::ColorOn,
    &W::Count,     &W::IsYT,      &W::IsScan,      &W::RollingStartPos, &W::RollingEraseWidth,
    &W::Envelope,  &W::Channels,  &W::CH1Range,    &W::CH1Offset,       &W::CH2Range,
    &W::CH2Offset, &W::TimeRange, &W::TriggerDelay};

constexpr std::tuple kMeasureFields{&MeasureRecord::Name, &MeasureRecord::HasData,
                                    &MeasureRecord::Title};
constexpr std::tuple kValueFields{&MeasureValue::Text, &MeasureValue::Enabled, &MeasureValue::Over,
                                  &MeasureValue::Under};

constexpr std::tuple kDataFields{&DataRecord::Name, &DataRecord::HasData, &DataRecord::Title,
                                 &DataRecord::Count};
// Behind the tokens, or at once in an item without any.
constexpr std::tuple kScaleFields{&DataRecord::VoltRange, &DataRecord::VoltOffset,
                                  &DataRecord::TimeRange, &DataRecord::TriggerDelay};

// Takes each field of the record to the reader or the writer.
template <typename Visitor, typename Record, typename Fields>
void Visit(Visitor& visitor, Record& record, const Fields& fields) {
  std::apply([&](auto... field) { (visitor(record.*field), ...); }, fields);
}

// The traces of which each row of samples has one value.
using Trace = SampleArray WaveRecord::*;
using RowShape = std::span<const Trace>;

constexpr Trace kPlainTraces[] = {&W::CH1Data, &W::CH2Data};
constexpr Trace kEnvelopeTraces[] = {&W::CH1Data, &W::CH1Min, &W::CH2Data, &W::CH2Min};

// X-Y always has both channels. A rolling display has no envelope. With `Channels` outside 1 to 3
// there are no rows.
RowShape ShapeOf(const WaveRecord& wave) {
  const std::int32_t channels = wave.IsYT ? wave.Channels : 3;
  const bool isEnvelope = wave.IsYT && !wave.IsScan && wave.Envelope;
  const RowShape both = isEnvelope ? RowShape(kEnvelopeTraces) : RowShape(kPlainTraces);
  switch (channels) {
    case 1:
      return both.first(both.size() / 2);
    case 2:
      return both.last(both.size() / 2);
    case 3:
      return both;
    default:
      return {};
  }
}

// Index 0 has a row too. An index outside the arrays has none.
int RowsOf(std::int32_t count) {
  return std::clamp(count, -1, kLastSample) + 1;
}

// Reads the samples into a new array, so that those behind the end of the file are 0.
void ReadSamples(FieldReader& reader, WaveRecord& wave) {
  const RowShape shape = ShapeOf(wave);
  const int rows = RowsOf(wave.Count);
  std::vector<std::int32_t> values(static_cast<std::size_t>(rows) * shape.size());
  reader(std::span(values));
  for (std::size_t k = 0; k < shape.size(); ++k) {
    SampleArray fresh;
    std::size_t place = k;
    for (int i = 0; i < rows; ++i, place += shape.size()) fresh.Store(i, values[place]);
    wave.*shape[k] = std::move(fresh);
  }
}

// Reads one item after another into its slot, also behind the end of the file: the samples of an
// item that keeps its old `HasData` become 0 there.
template <typename Read>
void ReadItems(int count, const Read& read) {
  for (int slot = 0; slot < std::min(count, kSheetSlots); ++slot) {
    read(static_cast<std::size_t>(slot));
  }
}

// Passes the items that have no slot, up to the items of the next kind. One record serves for all.
template <typename Record, typename Skip>
void SkipItems(FieldReader& reader, int count, const Skip& skip) {
  if (count <= kSheetSlots) return;
  Record spare;
  for (int item = kSheetSlots; item < count && !reader.AtEnd(); ++item) {
    spare.HasData = false;
    skip(reader, spare);
  }
}

void ReadWave(FieldReader& reader, WaveRecord& wave) {
  Visit(reader, wave, kWaveFields);
  wave.Date.clear();
  if (wave.HasData) ReadSamples(reader, wave);
}

void SkipWave(FieldReader& reader, WaveRecord& spare) {
  Visit(reader, spare, kWaveFields);
  if (!spare.HasData) return;
  const std::size_t values = static_cast<std::size_t>(RowsOf(spare.Count)) * ShapeOf(spare).size();
  for (std::size_t i = 0; i < values && !reader.AtEnd(); ++i) reader.Skip();
}

void ReadMeasure(FieldReader& reader, MeasureRecord& measure) {
  Visit(reader, measure, kMeasureFields);
  for (MeasureValue& value : measure.Values) {
    value.Verdict.clear();
    if (measure.HasData) Visit(reader, value, kValueFields);
  }
}

void ReadTokens(FieldReader& reader, DataRecord& data, std::vector<std::string>& tokens) {
  tokens.resize(kLastSample + 1);
  const int rows = RowsOf(data.Count);
  for (int i = 0; i < rows && !reader.AtEnd(); ++i) {
    reader.Take(tokens[static_cast<std::size_t>(i)], kLongestToken);
  }
  data.Samples = tokens;
}

void ReadData(FieldReader& reader, DataRecord& data, std::vector<std::string>& tokens) {
  Visit(reader, data, kDataFields);
  if (data.HasData) ReadTokens(reader, data, tokens);
  Visit(reader, data, kScaleFields);
}

void ReadAll(FieldReader& reader, DataSheet& sheet, std::vector<std::string>& tokens) {
  Visit(reader, sheet, kHeader);
  ReadItems(sheet.WaveCount, [&](std::size_t slot) { ReadWave(reader, sheet.Waves[slot]); });
  SkipItems<WaveRecord>(reader, sheet.WaveCount, SkipWave);
  ReadItems(sheet.MeasureCount,
            [&](std::size_t slot) { ReadMeasure(reader, sheet.Measures[slot]); });
  SkipItems<MeasureRecord>(reader, sheet.MeasureCount, ReadMeasure);
  ReadItems(sheet.DataCount,
            [&](std::size_t slot) { ReadData(reader, sheet.Datas[slot], tokens); });
  for (const auto count :
       {&DataSheet::WaveCount, &DataSheet::MeasureCount, &DataSheet::DataCount}) {
    sheet.*count = std::clamp(sheet.*count, 0, kSheetSlots);
  }
}

// The items in use. A count may be anything, like every number that came from a file.
template <typename Record>
std::span<const Record> InUse(const Slots<Record>& slots, int count) {
  return std::span(slots).first(static_cast<std::size_t>(std::clamp(count, 0, kSheetSlots)));
}

void WriteWave(FieldWriter& writer, const WaveRecord& wave) {
  Visit(writer, wave, kWaveFields);
  if (!wave.HasData) return;
  const RowShape shape = ShapeOf(wave);
  const int rows = RowsOf(wave.Count);
  for (int i = 0; i < rows; ++i) {
    for (const Trace trace : shape) writer((wave.*trace)[i]);
  }
}

// About the size of the file. Nearly all of it is samples, of three digits at most.
std::size_t ExpectedSize(const DataSheet& sheet) {
  std::size_t size = 0;
  for (const auto& wave : InUse(sheet.Waves, sheet.WaveCount)) {
    if (wave.HasData) size += static_cast<std::size_t>(RowsOf(wave.Count)) * ShapeOf(wave).size();
  }
  return size * 5 + (std::size_t{1} << 16);
}

void WriteMeasure(FieldWriter& writer, const MeasureRecord& measure) {
  Visit(writer, measure, kMeasureFields);
  if (!measure.HasData) return;
  for (const MeasureValue& value : measure.Values) Visit(writer, value, kValueFields);
}

// A token that the record does not hold is written as an empty one.
void WriteData(FieldWriter& writer, const DataRecord& data) {
  Visit(writer, data, kDataFields);
  const std::size_t rows = data.HasData ? static_cast<std::size_t>(RowsOf(data.Count)) : 0;
  for (std::size_t i = 0; i < rows; ++i) {
    writer(i < data.Samples.size() ? std::string_view(data.Samples[i]) : std::string_view());
  }
  Visit(writer, data, kScaleFields);
}

}  // namespace

void ReadDataSheet(const std::string& path, DataSheet& sheet, TransferScratch& scratch,
                   Prompts& prompts) {
  const FileContents file = ReadFile(path, kMostBytes, TooLong::Refuse);
  if (file.error) prompts.Show({.systemText = *file.error, .icon = MessageIcon::Critical});
  // A file that could not be opened has no signature either: the second message follows the first.
  FieldReader reader(file.bytes);
  std::string signature;
  reader(signature);
  if (signature != kSignature) {
    // "Invaild" stays: users know the message.
    prompts.Show({.text = "Data Sheet File Format is Invaild !", .icon = MessageIcon::Critical});
    return;
  }
  ReadAll(reader, sheet, scratch.TransferTokens);
}

std::string DataSheetText(const DataSheet& sheet) {
  FieldWriter writer(ExpectedSize(sheet));
  writer(kSignature);
  Visit(writer, sheet, kHeader);
  for (const auto& wave : InUse(sheet.Waves, sheet.WaveCount)) WriteWave(writer, wave);
  for (const auto& measure : InUse(sheet.Measures, sheet.MeasureCount)) {
    WriteMeasure(writer, measure);
  }
  for (const auto& data : InUse(sheet.Datas, sheet.DataCount)) WriteData(writer, data);
  return writer.TakeBytes();
}

bool WriteDataSheet(const std::string& path, const DataSheet& sheet, Prompts& prompts,
                    const SyncFile& sync) {
  const auto failure = WriteFile(path, DataSheetText(sheet), sync);
  if (failure) prompts.Show({.systemText = failure->text, .icon = MessageIcon::Critical});
  return !failure;
}

}  // namespace oriolemark

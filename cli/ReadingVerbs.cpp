// The verbs that read waveforms, samples, measurements and the screen, and the one that converts
// what was read before.

#include <algorithm>
#include <cmath>

#include "cli/Job.h"
#include "cli/Names.h"
#include "cli/Rendering.h"
#include "datasheet/SampleTable.h"
#include "datasheet/records/DataSheetFile.h"
#include "datasheet/records/SheetFields.h"
#include "link/LinkState.h"
#include "measure/ExportMeasure.h"
#include "measure/Quantities.h"
#include "output/Bitmap.h"
#include "values/Number.h"
#include "waveview/WaveDescription.h"
#include "waveview/WaveSamples.h"

namespace oriolemark {
namespace {

// Reads one item as its window does. The position of the channel is that of the window's options.
template <typename View>
View& ReadItem(
    Job& job, ItemKind kind, const std::function<void()>& prepare = [] {}) {
  constexpr const char* kChannels[] = {"ch1", "ch2", "both"};
  auto& view = dynamic_cast<View&>(job.session->Item(kind));
  const auto* const channel = std::ranges::find(kChannels, job.call.channel);
  view.OptionCH.Select(static_cast<int>(channel - std::begin(kChannels)));
  prepare();
  view.ReadOnce();
  return view;
}

FileForm SheetForm(Job& job) {
  return {".orm", [&job] { return DataSheetText(job.session->Program().sheet); }};
}

// The forms of a picture that `draw` returns. One that is too large has no pixels.
std::vector<FileForm> PictureForms(const Desk& desk,
                                   const std::function<std::unique_ptr<Canvas>()>& draw) {
  const auto encode = [draw](const auto& encoder) -> std::optional<std::string> {
    const std::unique_ptr<Canvas> picture = draw();
    if (picture->Pixels().empty()) return std::nullopt;
    return encoder(picture->Pixels(), picture->Width());
  };
  return {{".bmp", [encode] { return encode(BitmapBytes); }},
          {".png", [encode, &desk] { return encode(desk.encodePng); }}};
}

// The texts of a record, and its samples.
Result WaveResult(const WaveRecord& record) {
  Result result{.columns = WaveColumns(record)};
  const std::pair<const char*, const std::string&> texts[] = {
      {"CH1 range", record.CH1Range},   {"CH1 offset", record.CH1Offset},
      {"CH2 range", record.CH2Range},   {"CH2 offset", record.CH2Offset},
      {"Time range", record.TimeRange}, {"Trigger delay", record.TriggerDelay}};
  for (const auto& [name, text] : texts) {
    if (record.HasData && !text.empty()) result.values.push_back({name, text});
  }
  result.text = DescribeWave(record, {}, 1);
  if (!result.columns.empty()) {
    result.text += " " + std::to_string(result.columns.front().values.size()) + " samples.";
  }
  return result;
}

Result SamplesResult(const DataRecord& record) {
  SampleColumn number{"NO.", "", {}};
  SampleColumn volts{"Voltage", "V", {}};
  SampleColumn time{"Time", "s", {}};
  for (int i = 1; i <= (record.HasData ? SampleCount(record) : 0); ++i) {
    number.values.push_back(i);
    volts.values.push_back(LeadingNumber(SampleText(record, i, 1)));
    time.values.push_back(LeadingNumber(SampleText(record, i, 2)));
  }
  std::string text = SampleTableText(record);
  std::erase(text, '\r');
  return {.text = text,
          .values = {{"Title", record.HasData ? record.Title : ""}},
          .columns = {number, volts, time}};
}

// The unit of a quantity's numbers: the one without a prefix, and none for a fraction.
std::string BaseUnit(const Quantity& quantity) {
  const auto family = [&](const char* unit) {
    return std::ranges::count(quantity.family.units, std::string_view(unit)) != 0;
  };
  for (const char* unit : {"V", "Hz", "s"}) {
    if (family(unit)) return unit;
  }
  return "fraction";
}

Result MeasureResult(const MeasureRecord& record) {
  Result result;
  std::vector<Value> verdicts;
  for (const Quantity& quantity : kQuantities) {
    static const MeasureValue kNone;
    const MeasureValue& value = record.HasData ? record.Values[quantity.index] : kNone;
    const std::string verdict = Judge(value, quantity.family);
    // A unit without digits converts to 0.
    const bool hasDigits = value.Text.find_first_of("0123456789") != std::string::npos;
    const Converted number = hasDigits ? quantity.family.toNumber(value.Text) : Converted();
    result.values.push_back({quantity.caption, value.Text + (verdict.empty() ? "" : "  ") + verdict,
                             BaseUnit(quantity),
                             number.ConvertValid ? std::optional(number.value) : std::nullopt});
    if (verdict.empty()) continue;
    verdicts.push_back({std::string(quantity.caption) + " verdict", verdict});
    if (PictureOf(verdict) == kFailPicture) result.code = ExitCode::VerdictFail;
  }
  result.text = TextOf(result);
  result.text.pop_back();
  result.values.insert(result.values.end(), verdicts.begin(), verdicts.end());
  return result;
}

std::size_t FieldsIn(std::string_view bytes) {
  FieldReader reader(bytes);
  std::size_t fields = 0;
  for (; !reader.AtEnd(); ++fields) reader.Skip();
  return fields;
}

// A sheet that is read without an instrument. `failed` is set, and a message printed, if it could
// not be read or ends too early: the values behind its end would be 0.
struct ReadSheet {
  ReadSheet(const Job& job, const std::string& path)
      : prompts([this, &job, &path](const std::string& text) { Fail(job, path, text); }) {
    if (!job.desk.fileExists(path)) {
      Fail(job, path, "There is no such file.");
      return;
    }
    ReadDataSheet(path, sheet, scratch, prompts);
    if (failed) return;
    const FileContents file = ReadFile(path, std::size_t{256} << 20);
    if (FieldsIn(file.bytes) < FieldsIn(DataSheetText(sheet)))
      Fail(job, path, "It ends too early.");
  }
  void Fail(const Job& job, const std::string& path, const std::string& text) {
    if (std::exchange(failed, true)) return;
    job.Explain("\"" + path + "\" could not be read: " + text);
  }

  DataSheet sheet;
  TransferScratch scratch;
  bool failed = false;
  LinePrompts prompts;
};

// The record of the item that was named, or of the only one. Null, and a message, if there is none
// or the name is missing.
template <typename Record>
const Record* FindItem(const Job& job, std::span<const Record> items, const std::string& name) {
  std::vector<std::string> names;
  for (const Record& item : items) names.push_back(Printable(item.Name));
  const auto found = std::ranges::find(names, name);
  if (found != names.end()) return &items[static_cast<std::size_t>(found - names.begin())];
  if (name.empty() && items.size() == 1) return &items.front();
  std::string list;
  for (const std::string& known : names) list += (list.empty() ? "" : ", ") + known;
  job.Explain(items.empty()  ? "The data sheet holds no item of this kind."
              : name.empty() ? "The data sheet has several items. Name one of " + list + "."
                             : "The data sheet has no item \"" + name + "\". It has " + list + ".");
  return nullptr;
}

// The name of an existing file at the start of "FILE" or "FILE:ITEM". The whole text if there is
// none.
std::string FilePartOf(const Job& job, const std::string& text) {
  for (std::size_t colon = text.size(); colon != std::string::npos && colon > 0;
       colon = text.rfind(':', colon - 1)) {
    if (job.desk.fileExists(text.substr(0, colon))) return text.substr(0, colon);
  }
  return text;
}

}  // namespace

ExitCode CheckWave(Job& job) {
  const bool drawing = !job.call.zoom.empty() || job.call.monochrome || job.call.noGrid;
  if (IsPicture(job.call.file) || !drawing) return ExitCode::Success;
  job.Explain("--zoom, --monochrome and --no-grid are for a .bmp or .png file.");
  return ExitCode::Usage;
}

Result RunWave(Job& job) {
  auto& view = ReadItem<frmWave>(job, ItemKind::Wave);
  const Call& call = job.call;
  view.BestFitChk.SetValue(false);
  // The box holds this text already, but the picture fits a window that is not there.
  view.ZoomCombo.SetText("");
  view.ZoomCombo.EndEdit(call.zoom.empty() ? "150%" : call.zoom);
  if (call.monochrome) view.OptionColor.Select(1);
  if (call.noGrid) view.GridCheck.SetValue(false);
  Result result = WaveResult(job.session->Program().sheet.Waves[0]);
  for (const SampleColumn& column : result.columns) {
    if (job.session->Failed() || column.values.empty() || !std::isnan(column.values[0])) continue;
    job.session->Fail("The instrument's answer holds no scale for " + column.name + ".");
    break;
  }
  result.files = PictureForms(job.desk, [&view] { return view.WholePicture(); });
  result.files.push_back(SheetForm(job));
  return result;
}

Result RunSamples(Job& job) {
  ReadItem<frmData>(job, ItemKind::Data);
  const DataRecord& record = job.session->Program().sheet.Datas[0];
  Result result = SamplesResult(record);
  result.files = {SheetForm(job), {"", [&record] { return SampleTableText(record); }}};
  return result;
}

// Reads the limits once, so that a watch judges all its lines by the same ones.
ExitCode CheckMeasure(Job& job) {
  if (job.call.limits.empty()) return ExitCode::Success;
  const std::string path = FilePartOf(job, job.call.limits);
  const bool named = job.call.limits.size() > path.size();
  const auto read = std::make_unique<ReadSheet>(job, path);
  if (read->failed) return ExitCode::File;
  const auto count = static_cast<std::size_t>(read->sheet.MeasureCount);
  const auto items = std::span<const MeasureRecord>(read->sheet.Measures).first(count);
  const MeasureRecord* const item =
      FindItem(job, items, named ? job.call.limits.substr(path.size() + 1) : "");
  if (item == nullptr) return ExitCode::Usage;
  if (std::ranges::none_of(item->Values, &MeasureValue::Enabled)) {
    job.Explain("No limit of this item is enabled, so there is nothing to judge.");
    return ExitCode::Usage;
  }
  job.limits = item->Values;
  return ExitCode::Success;
}

Result RunMeasure(Job& job) {
  MeasureRecord& record = job.session->Program().sheet.Measures[0];
  ReadItem<frmMeasure>(job, ItemKind::Measure, [&] {
    if (job.limits) record.Values = *job.limits;
  });
  Result result = MeasureResult(record);
  result.files = {SheetForm(job), {"", [&record] { return MeasureFileText(record); }}};
  return result;
}

ExitCode CheckScreen(Job& job) {
  if (job.session->Link().ScopeIOType == kLinkUsb) return ExitCode::Success;
  job.Explain("The screen can only be read over USB.");
  return ExitCode::Usage;
}

Result RunScreen(Job& job) {
  frmV_Panel& panel = job.session->Program().panel;
  // Refuses old firmware, and opens the panel otherwise.
  job.session->EditNode(kVirtualPanelLabel);
  if (!panel.Loaded()) return {.code = ExitCode::Refused};
  panel.cmdStop.Click();
  if (!panel.DrawBulkWave()) job.session->Fail("The screen could not be read.");
  return {.files = PictureForms(job.desk, [&panel] { return panel.WavePic.Surface().MakeCopy(); })};
}

Result RunConvert(Job& job) {
  const auto read = std::make_unique<ReadSheet>(job, job.call.input);
  if (read->failed) return {.code = ExitCode::File};
  const DataSheet& sheet = read->sheet;
  struct Item {
    std::string Name;
    Result result;
  };
  std::vector<Item> items;
  for (int i = 0; i < sheet.WaveCount; ++i) {
    const WaveRecord& record = sheet.Waves[static_cast<std::size_t>(i)];
    items.push_back({record.Name, WaveResult(record)});
  }
  for (int i = 0; i < sheet.MeasureCount; ++i) {
    const MeasureRecord& record = sheet.Measures[static_cast<std::size_t>(i)];
    items.push_back({record.Name, MeasureResult(record)});
    items.back().result.code = ExitCode::Success;
  }
  for (int i = 0; i < sheet.DataCount; ++i) {
    const DataRecord& record = sheet.Datas[static_cast<std::size_t>(i)];
    items.push_back({record.Name, SamplesResult(record)});
  }
  const bool all = job.call.item.empty() && job.call.format != Format::Csv;
  if (!all) {
    const Item* const item = FindItem(job, std::span<const Item>(items), job.call.item);
    return item == nullptr ? Result{.code = ExitCode::Usage} : item->result;
  }
  std::vector<Result> parts;
  for (Item& item : items) {
    item.result.name = item.Name;
    parts.push_back(std::move(item.result));
  }
  return {.parts = std::move(parts)};
}

}  // namespace oriolemark

#include "measure/frmMeasure.h"

#include <vector>

#include "measure/ExportMeasure.h"

namespace oriolemark {
namespace {

enum Column { kType, kValue, kPassFail };
constexpr int kColumns = 3;

// Window units that the columns leave free.
constexpr double kFreeWidth = 200;

const Quantity& QuantityOf(int row) {
  return kQuantities[static_cast<std::size_t>(row)];
}

}  // namespace

frmMeasure::frmMeasure(const ReadingContext& context, const ExportContext& output,
                       frmPassFailed& limits)
    : ReadingView(context, {ItemKind::Measure,
                            FirstTick::ShowsAfterOptions,
                            "Measure Data Loading",
                            {TransferKind::MeasureCH1, TransferKind::MeasureCH2}}),
      cmdPassFailed([this] { cmdPassFailed_Click(); }),
      cmdExport([this] { cmdExport_Click(); }),
      output_(output),
      limits_(limits) {
  MeasureView.resized = [this] { Form_Resize(); };
}

MeasureRecord& frmMeasure::Record() {
  return context_.sheet.Measures[static_cast<std::size_t>(Slot())];
}

void frmMeasure::Form_Load() {
  ReadingView::Form_Load();
  Form_Resize();
  // Nothing of an item that this window showed before.
  SettingLabel.SetText("");
  MeasureView.SetRows({});
}

void frmMeasure::Form_Resize() {
  const double width = (MeasureView.Width() - kFreeWidth) / kColumns;
  MeasureView.SetColumnWidths(std::vector<double>(kColumns, width));
}

void frmMeasure::TakeReading(int slot) {
  MeasureRecord& record = context_.sheet.Measures[static_cast<std::size_t>(slot)];
  for (std::size_t i = 0; i < record.Values.size(); ++i) {
    record.Values[i].Text = context_.scratch.TransferValues[i];
  }
  record.Title = context_.scratch.TransferText;
}

void frmMeasure::ShowReading() {
  if (!Loaded()) return;
  ShowMeasureRecord();
  // The new values are on the screen before the next reading begins.
  context_.refresh.waiting.DoEvents();
  Form_Resize();
}

void frmMeasure::ShowMeasureRecord() {
  if (Record().HasData) {
    ShowMeasureValues();
  } else {
    StartDispMeasure();
  }
}

void frmMeasure::StartDispMeasure() {
  ShowRows(
      {.text = [](int row, int column) -> std::string {
         return column == kType ? QuantityOf(row).emptyCaption : "";
       },
       .picture = [](int row, int column) { return column == kType ? QuantityOf(row).picture : 0; },
       .copied = [](int row, int column) -> std::string {
         return column == kType ? QuantityOf(row).fileName : "";
       }});
}

void frmMeasure::ShowMeasureValues() {
  MeasureRecord& record = Record();
  SettingLabel.SetText(record.Title);
  for (const Quantity& quantity : kQuantities) {
    MeasureValue& value = record.Values[quantity.index];
    value.Verdict = Judge(value, quantity.family);
  }
  ShowRows({.text = [this](int row, int column) { return CellText(QuantityOf(row), column); },
            .picture = [this](int row, int column) { return CellPicture(QuantityOf(row), column); },
            .copied = [this](int row, int column) { return CopiedText(QuantityOf(row), column); }});
}

void frmMeasure::ShowRows(ListRows rows) {
  Form_Resize();
  rows.count = kMeasureValues;
  MeasureView.SetRows(std::move(rows));
}

std::string frmMeasure::CellText(const Quantity& quantity, int column) {
  const MeasureValue& value = Record().Values[quantity.index];
  if (column == kType) return quantity.caption;
  return column == kValue ? value.Text : value.Verdict;
}

int frmMeasure::CellPicture(const Quantity& quantity, int column) {
  if (column == kType) return quantity.picture;
  return column == kPassFail ? PictureOf(Record().Values[quantity.index].Verdict) : 0;
}

// As in an exported file.
std::string frmMeasure::CopiedText(const Quantity& quantity, int column) {
  if (column == kType) return quantity.fileName;
  const std::string text = CellText(quantity, column);
  return column == kValue ? RemoveSpaces(text) : text;
}

void frmMeasure::cmdPassFailed_Click() {
  const std::optional<int> slot = limits_.Ask(Slot(), Caption());
  if (!slot) return;
  const auto& view = context_.sheet.MeasureViews[static_cast<std::size_t>(*slot)];
  if (view) view->ShowReading();
}

void frmMeasure::cmdExport_Click() {
  ExportFile(output_, kTableExport, [this] { return MeasureFileText(Record()); });
}

}  // namespace oriolemark

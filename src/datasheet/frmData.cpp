#include "datasheet/frmData.h"

#include <utility>

#include "datasheet/SampleTable.h"

namespace oriolemark {
namespace {

constexpr double kBesideColumns = 600;  // window units that the columns leave free

}  // namespace

frmData::frmData(const ReadingContext& context, ExportContext exporting)
    : ReadingView(context, {ItemKind::Data,
                            FirstTick::ShowsAfterOptions,
                            "Wave Data Data Loading",
                            {TransferKind::DataCH1, TransferKind::DataCH2},
                            NoneSelected::ReadsLast}),
      MeasureView(kSampleColumns),
      cmdExport([this] { cmdExport_Click(); }),
      exporting_(std::move(exporting)) {
  MeasureView.resized = [this] { PlaceColumns(); };
}

void frmData::Form_Unload() {
  ReadingView::Form_Unload();
  // The next load shows nothing until its first tick, like a new window.
  SettingLabel.SetText({});
  MeasureView.SetRows({});
}

void frmData::LoadData() {
  if (Record(Slot()).HasData) {
    FillTable();
  } else {
    BlankTable();
  }
}

void frmData::ShowReading() {
  if (Loaded()) LoadData();
}

void frmData::BlankTable() {
  SettingLabel.SetText({});
  PlaceColumns();
  MeasureView.SetRows({.count = kBlankRows});
}

void frmData::FillTable() {
  const DataRecord& record = Record(Slot());
  SettingLabel.SetText(record.Title);
  PlaceColumns();
  MeasureView.SetRows(
      {.count = SampleCount(record),
       .text = [this](int row, int column) { return SampleText(Record(Slot()), row + 1, column); },
       .copied = [this](
                     int row,
                     int column) { return ExportedSampleText(Record(Slot()), row + 1, column); }});
}

void frmData::PlaceColumns() {
  const double fifth = (MeasureView.Width() - kBesideColumns) / 5;
  MeasureView.SetColumnWidths({fifth, 2 * fifth, 2 * fifth});
}

void frmData::TakeReading(int slot) {
  const TransferScratch& scratch = context_.scratch;
  DataRecord& record = Record(slot);
  record.Count = scratch.TransferSize;
  record.Title = scratch.TransferText;
  record.Samples = scratch.TransferTokens;
  record.VoltRange = scratch.TransferVoltRange;
  record.VoltOffset = scratch.TransferVoltOffset;
  record.TimeRange = scratch.TransferTimeRange;
  record.TriggerDelay = scratch.TransferTriggerDelay;
}

void frmData::cmdExport_Click() {
  ExportFile(exporting_, kTableExport, [this] { return SampleTableText(Record(Slot())); });
}

}  // namespace oriolemark

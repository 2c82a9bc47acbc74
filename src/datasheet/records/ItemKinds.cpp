#include "datasheet/records/ItemKinds.h"

#include "datasheet/records/TransferScratch.h"

namespace oriolemark {
namespace {

// Adding a measure item switches off the tests before this index. Behind it, Vamp, +Duty and -Duty
// keep the switch that the slot held.
constexpr std::size_t kSwitchedOff = 15;

template <auto Records>
ItemRecord& RecordIn(DataSheet& sheet, int slot) {
  return (sheet.*Records)[static_cast<std::size_t>(slot)];
}

template <auto Records>
void CopyIn(DataSheet& sheet, int from, int to) {
  auto& records = sheet.*Records;
  records[static_cast<std::size_t>(to)] = records[static_cast<std::size_t>(from)];
}

void PrepareWave(DataSheet& sheet, int slot) {
  WaveRecord& record = sheet.Waves[static_cast<std::size_t>(slot)];
  record.BestFitOn = true;
  record.ColorOn = true;
  record.GridOn = true;
}

void PrepareMeasure(DataSheet& sheet, int slot) {
  auto& values = sheet.Measures[static_cast<std::size_t>(slot)].Values;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i < kSwitchedOff) values[i].Enabled = false;
    values[i].Over = kMeasureDefaults[i].over;
    values[i].Under = kMeasureDefaults[i].under;
  }
}

void PrepareData(DataSheet&, int) {}

using S = DataSheet;
using T = TransferScratch;

// In the order of the enumeration.
constexpr ItemKindRow kRows[kTreeOrder.size()] = {
    {"Wave", "Waveform", "Waveform", 3, &S::WaveCount, &S::WaveViews, &T::TransferWaveSlot,
     RecordIn<&S::Waves>, CopyIn<&S::Waves>, PrepareWave},
    {"Measure", "Measure", "Measure", 4, &S::MeasureCount, &S::MeasureViews,
     &T::TransferMeasureSlot, RecordIn<&S::Measures>, CopyIn<&S::Measures>, PrepareMeasure},
    {"Data", "Data", "Wave Data", 5, &S::DataCount, &S::DataViews, &T::TransferDataSlot,
     RecordIn<&S::Datas>, CopyIn<&S::Datas>, PrepareData},
};

}  // namespace

const ItemKindRow& RowOf(ItemKind kind) {
  return kRows[static_cast<std::size_t>(kind)];
}

void UnloadViews(DataSheet& sheet) {
  for (const ItemKind kind : kTreeOrder) {
    for (auto& view : sheet.*RowOf(kind).views) {
      if (view) view->Unload();
    }
  }
}

}  // namespace oriolemark

#include "datasheet/FileFunc.h"

namespace oriolemark {
namespace {

constexpr int kMostItems = 16;
// Vamp, +Duty and -Duty keep the test switch that the slot held.
constexpr int kSwitchedOff = 15;

}  // namespace

bool FileFunc::SheetExists() {
  const bool exists = tree_.Exists(sheet_.SheetNode);
  if (setAddButtons) setAddButtons(exists);
  return exists;
}

bool FileFunc::MayAdd(int count) {
  if (!SheetExists()) {
    prompts_.Show(
        {.text = "Please Open or Creat a Data Sheet First", .icon = MessageIcon::Exclamation});
    return false;
  }
  if (count + 1 > kMostItems) {
    prompts_.Show({.text = "Exceed maximum file numbers limit", .icon = MessageIcon::Exclamation});
    return false;
  }
  return true;
}

ItemView* FileFunc::View(Slots<std::unique_ptr<ItemView>>& views, const ViewMaker& make, int slot) {
  auto& view = views[static_cast<std::size_t>(slot)];
  if (!view && make) view = make();
  if (view) view->SetTag(std::to_string(slot));
  return view.get();
}

template <typename Record>
void FileFunc::Add(Record& record, ItemView* view, const char* word, int slot, int image) {
  record.Name = word + std::to_string(slot);
  record.HasData = false;
  if (view != nullptr) {
    view->SetCaption(record.Name);
    view->Show();
  }
  record.TreeNode = tree_.Add(sheet_.SheetNode, record.Name, image);
}

void FileFunc::AddWaveItem() {
  const int slot = sheet_.WaveCount;
  if (!MayAdd(slot)) return;
  sheet_.Modified = true;
  WaveRecord& record = sheet_.Waves[static_cast<std::size_t>(slot)];
  record.BestFitOn = true;
  record.ColorOn = true;
  record.GridOn = true;
  Add(record, WaveView(slot), "Wave", slot, tree_image::kWave);
  ++sheet_.WaveCount;
}

void FileFunc::AddMeasureItem() {
  const int slot = sheet_.MeasureCount;
  if (!MayAdd(slot)) return;
  sheet_.Modified = true;
  MeasureRecord& record = sheet_.Measures[static_cast<std::size_t>(slot)];
  for (std::size_t i = 0; i < record.Values.size(); ++i) {
    if (i < kSwitchedOff) record.Values[i].Enabled = false;
    record.Values[i].Over = kMeasureDefaults[i].over;
    record.Values[i].Under = kMeasureDefaults[i].under;
  }
  Add(record, MeasureView(slot), "Measure", slot, tree_image::kMeasure);
  ++sheet_.MeasureCount;
}

void FileFunc::AddDataItem() {
  const int slot = sheet_.DataCount;
  if (!MayAdd(slot)) return;
  sheet_.Modified = true;
  DataRecord& record = sheet_.Datas[static_cast<std::size_t>(slot)];
  Add(record, DataView(slot), "Data", slot, tree_image::kData);
  ++sheet_.DataCount;
}

}  // namespace oriolemark

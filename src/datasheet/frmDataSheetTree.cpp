#include "datasheet/frmDataSheetTree.h"

namespace oriolemark {
namespace {

constexpr const char* kRootText = "Data Sheet";

}  // namespace

frmDataSheetTree::frmDataSheetTree(DataSheet& sheet, Prompts& prompts)
    : files(sheet, DataSheetTree, prompts), sheet_(sheet) {
  SetCaption("Data Browser");
  DataSheetTree.doubleClick = [this] { SetActiveForm(); };
}

void frmDataSheetTree::Form_Load() {
  DataSheetTree.Clear();
  AddSheetNodes();
  if (!sheetModelReady_) {
    sheetModelReady_ = true;
    mnuNewDataSheet_Click();
    return;
  }
  const auto addItems = [this](auto& records, int count, int image) {
    for (int slot = 0; slot < count; ++slot) {
      auto& record = records[static_cast<std::size_t>(slot)];
      record.TreeNode = DataSheetTree.Add(sheet_.SheetNode, record.Name, image);
    }
  };
  addItems(sheet_.Waves, sheet_.WaveCount, tree_image::kWave);
  addItems(sheet_.Measures, sheet_.MeasureCount, tree_image::kMeasure);
  addItems(sheet_.Datas, sheet_.DataCount, tree_image::kData);
}

void frmDataSheetTree::AddSheetNodes() {
  sheet_.RootNode = DataSheetTree.Add(kNoNode, kRootText, tree_image::kRoot);
  sheet_.SheetNode = DataSheetTree.Add(sheet_.RootNode, sheet_.Title, tree_image::kSheet);
  DataSheetTree.SetExpanded(sheet_.RootNode, true);
  DataSheetTree.SetExpanded(sheet_.SheetNode, true);
}

void frmDataSheetTree::mnuNewDataSheet_Click() {
  CloseAllItems();
  sheet_.Title = "Untitle";
  sheet_.FileName.clear();
  DataSheetTree.Remove(sheet_.SheetNode);
  sheet_.SheetNode = DataSheetTree.Add(sheet_.RootNode, sheet_.Title, tree_image::kSheet);
  DataSheetTree.SetExpanded(sheet_.RootNode, true);
  DataSheetTree.SetExpanded(sheet_.SheetNode, true);
  files.SheetExists();
}

void frmDataSheetTree::CloseAllItems() {
  // A view that was loaded and never ticked has no ViewOpen yet, and goes too.
  const auto close = [](auto& views) {
    for (auto& view : views) {
      if (view) view->Unload();
    }
  };
  close(sheet_.WaveViews);
  close(sheet_.MeasureViews);
  close(sheet_.DataViews);
  sheet_.WaveCount = 0;
  sheet_.MeasureCount = 0;
  sheet_.DataCount = 0;
}

void frmDataSheetTree::SetActiveForm() {
  const TreeNode selected = DataSheetTree.Selected();
  const auto bringForward = [&](auto& records, int count, auto viewOf) {
    for (int slot = 0; slot < count; ++slot) {
      if (records[static_cast<std::size_t>(slot)].TreeNode != selected) continue;
      ItemView* view = viewOf(slot);
      if (view == nullptr) continue;
      view->SetCaption(DataSheetTree.Text(selected));
      view->BringToFront();
    }
  };
  if (selected == kNoNode) return;
  bringForward(sheet_.Datas, sheet_.DataCount, [this](int slot) { return files.DataView(slot); });
  bringForward(sheet_.Waves, sheet_.WaveCount, [this](int slot) { return files.WaveView(slot); });
  bringForward(sheet_.Measures, sheet_.MeasureCount,
               [this](int slot) { return files.MeasureView(slot); });
}

}  // namespace oriolemark

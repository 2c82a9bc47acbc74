#include "datasheet/frmDataSheetTree.h"

namespace oriolemark {
namespace {

constexpr const char* kRootText = "Data Sheet";

}  // namespace

frmDataSheetTree::frmDataSheetTree(DataSheet& sheet, Prompts& prompts)
    : files(sheet, DataSheetTree, prompts), sheet_(sheet), prompts_(prompts) {
  SetCaption("Data Browser");
  DataSheetTree.doubleClick = [this] { SetActiveForm(); };
  DataSheetTree.afterLabelEdit = [this](std::string& text) { ChangeFormName(text); };
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
  UnloadViews(sheet_);
  sheet_.WaveCount = 0;
  sheet_.MeasureCount = 0;
  sheet_.DataCount = 0;
}

template <typename Act>
void frmDataSheetTree::ForSelected(Act act) {
  const TreeNode selected = DataSheetTree.Selected();
  if (selected == kNoNode) return;
  const auto visit = [&](auto& records, int count, auto viewOf) {
    for (int slot = 0; slot < count; ++slot) {
      auto& record = records[static_cast<std::size_t>(slot)];
      if (record.TreeNode == selected) act(record, viewOf(slot));
    }
  };
  visit(sheet_.Datas, sheet_.DataCount, [this](int slot) { return files.DataView(slot); });
  visit(sheet_.Waves, sheet_.WaveCount, [this](int slot) { return files.WaveView(slot); });
  visit(sheet_.Measures, sheet_.MeasureCount, [this](int slot) { return files.MeasureView(slot); });
}

void frmDataSheetTree::ChangeFormName(std::string& newText) {
  const TreeNode selected = DataSheetTree.Selected();
  if (selected == sheet_.RootNode) {
    newText = kRootText;
    prompts_.Show({.text = "Name of Root Can't Change", .icon = MessageIcon::Exclamation});
    return;
  }
  if (selected == sheet_.SheetNode) {
    sheet_.Title = newText;
    sheet_.Modified = true;
    return;
  }
  ForSelected([&](auto& record, ItemView* view) {
    record.Name = newText;
    sheet_.Modified = true;
    if (view == nullptr) return;
    view->SetCaption(record.Name);
    view->BringToFront();
  });
}

void frmDataSheetTree::SetActiveForm() {
  ForSelected([this](auto& record, ItemView* view) {
    if (view == nullptr) return;
    view->SetCaption(DataSheetTree.Text(record.TreeNode));
    view->BringToFront();
  });
}

}  // namespace oriolemark

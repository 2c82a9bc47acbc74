#include "datasheet/frmDataSheetTree.h"

namespace oriolemark {
namespace {

constexpr const char* kRootText = "Data Sheet";
constexpr int kRootImage = 1;
constexpr int kSheetImage = 2;

}  // namespace

frmDataSheetTree::frmDataSheetTree(DataSheet& sheet, Prompts& prompts)
    : files(sheet, DataSheetTree, prompts), sheet_(sheet), prompts_(prompts) {
  SetCaption("Data Browser");
  DataSheetTree.doubleClick = [this] { SetActiveForm(); };
  DataSheetTree.afterLabelEdit = [this](std::string& text) { ChangeFormName(text); };
}

void frmDataSheetTree::Form_Load() {
  DataSheetTree.Clear();
  sheet_.RootNode = DataSheetTree.Add(kNoNode, kRootText, kRootImage);
  AddSheetNode();
  if (!sheetModelReady_) {
    sheetModelReady_ = true;
    mnuNewDataSheet_Click();
    return;
  }
  for (const ItemKind kind : kTreeOrder) {
    const ItemKindRow& row = RowOf(kind);
    for (int slot = 0; slot < sheet_.*row.count; ++slot) {
      ItemRecord& record = row.record(sheet_, slot);
      record.TreeNode = DataSheetTree.Add(sheet_.SheetNode, record.Name, row.image);
    }
  }
}

void frmDataSheetTree::AddSheetNode() {
  sheet_.SheetNode = DataSheetTree.Add(sheet_.RootNode, sheet_.Title, kSheetImage);
  DataSheetTree.SetExpanded(sheet_.RootNode, true);
  DataSheetTree.SetExpanded(sheet_.SheetNode, true);
}

void frmDataSheetTree::mnuNewDataSheet_Click() {
  CloseAllItems();
  // "Untitle" stays: users know the word.
  sheet_.Title = "Untitle";
  sheet_.FileName.clear();
  DataSheetTree.Remove(sheet_.SheetNode);
  AddSheetNode();
  files.SheetExists();
}

void frmDataSheetTree::CloseAllItems() {
  UnloadViews(sheet_);
  ForgetItems(sheet_);
}

void frmDataSheetTree::ForSelected(
    const std::function<void(ItemRecord& record, ItemView* view)>& act) {
  const TreeNode selected = DataSheetTree.Selected();
  if (selected == kNoNode) return;
  for (const ItemKind kind : kSearchOrder) {
    const ItemKindRow& row = RowOf(kind);
    for (int slot = 0; slot < sheet_.*row.count; ++slot) {
      ItemRecord& record = row.record(sheet_, slot);
      if (record.TreeNode == selected) act(record, files.View(kind, slot));
    }
  }
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
  ForSelected([&](ItemRecord& record, ItemView* view) {
    record.Name = newText;
    sheet_.Modified = true;
    if (view == nullptr) return;
    view->SetCaption(record.Name);
    view->BringToFront();
  });
}

void frmDataSheetTree::SetActiveForm() {
  ForSelected([this](ItemRecord& record, ItemView* view) {
    if (view == nullptr) return;
    view->SetCaption(DataSheetTree.Text(record.TreeNode));
    view->BringToFront();
  });
}

}  // namespace oriolemark

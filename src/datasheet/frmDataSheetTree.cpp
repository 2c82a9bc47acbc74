#include "datasheet/frmDataSheetTree.h"

#include <algorithm>
#include <vector>

#include "datasheet/records/DataSheetFile.h"
#include "platform/Utf8.h"

namespace oriolemark {
namespace {

constexpr DocumentWords kWords{.changes = "Save the changes to the Data Sheet File",
                               .saveAsTitle = "Save As",
                               .filter = "Data Sheet Files (*.orm)|*.orm",
                               .saveAsFilter = "Data Sheet Files (*.orm)|*.orm",
                               .extension = ".orm"};

constexpr const char* kRootText = "Data Sheet";
constexpr int kRootImage = 1;
constexpr int kSheetImage = 2;

}  // namespace

frmDataSheetTree::frmDataSheetTree(const BrowserContext& context)
    : files(context.sheet, context.scratch, DataSheetTree, context.prompts),
      file(kWords, context.sheet.FileName, context.sheet.Modified, context.prompts,
           context.recovered,
           {.read =
                [this](const std::string& path) {
                  ReadDataSheet(path, sheet_, context_.scratch, context_.prompts);
                },
            .write =
                [this](const std::string& path) {
                  return WriteDataSheet(path, sheet_, context_.prompts, context_.sync);
                },
            .title = [this] { return Utf8Of(sheet_.Title); },
            // A sheet that has been removed, or is like a new one, is not worth a copy.
            .contents = [this] { return HasContents() ? DataSheetText(sheet_) : std::string(); },
            .maySave = [this] { return files.RequireSheet(); }}),
      context_(context),
      sheet_(context.sheet) {
  SetCaption("Data Browser");
  BuildMenu();
  DataSheetTree.doubleClick = [this] { SetActiveForm(); };
  DataSheetTree.afterLabelEdit = [this](std::string& text) { ChangeFormName(text); };
  DataSheetTree.keyDown = [this](int code) { KeyDown(code); };
  DataSheetTree.mouseDown = [this](int button) {
    if (button == kRightButton) PopupMenuFor();
  };
  sheet_.Modified.onChanged = [this] { ShowChanged(); };
}

bool frmDataSheetTree::HasContents() const {
  const int items = sheet_.WaveCount + sheet_.MeasureCount + sheet_.DataCount;
  return DataSheetTree.Exists(sheet_.SheetNode) && (items > 0 || sheet_.Title != kNewTitle);
}

void frmDataSheetTree::BuildMenu() {
  const MenuRow separator;
  pop_mnu1.entries = MakeMenu({
      {&mnuNewDataSheet, "mnuNewDataSheet", "&New Data Sheet", [this] { mnuNewDataSheet_Click(); }},
      {&mnuOpenDataSheet, "mnuOpenDataSheet", "&Open Data Sheet",
       [this] { mnuOpenDataSheet_Click(); }},
      separator,
      {&mnuSaveDataSheet, "mnuSaveDataSheet", "&Save Data Sheet",
       [this] { mnuSaveDataSheet_Click(); }},
      {&mnuSaveDataSheetAs, "mnuSaveDataSheetAs", "Sa&ve Data Sheet As", [this] { file.SaveAs(); }},
      separator,
      {&mnuAddNew, "mnuAddNew", "&Add New"},
      separator,
      {&mnuRename, "mnuRename", "Re&name", [this] { DataSheetTree.StartLabelEdit(); }},
      {&barBeforeRemove, "barBeforeRemove", kBarCaption},
      {&mnuRemove, "mnuRemove", "&Remove", [this] { mnuRemove_Click(); }},
      {&barBeforeSorted, "barBeforeSorted", kBarCaption},
      {&mnuSorted, "mnuSorted", "So&rted", [this] { mnuSorted_Click(); }},
  });
  mnuAddNew.submenu = MakeMenu({
      {&mnuAddNewWaveform, "mnuAddNewWaveform", "&Waveform", [this] { files.AddWaveItem(); }},
      {&mnuAddNewMeasure, "mnuAddNewMeasure", "&Measure", [this] { files.AddMeasureItem(); }},
      {&mnuAddNewData, "mnuAddNewData", "&Data", [this] { files.AddDataItem(); }},
  });
}

// Closing the pane and opening it again keeps the sheet. One that was removed comes back empty.
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
    for (int slot = 0; slot < sheet_.*RowOf(kind).count; ++slot) files.AddNode(kind, slot);
  }
  files.SheetExists();
}

void frmDataSheetTree::AddSheetNode() {
  sheet_.SheetNode = DataSheetTree.Add(sheet_.RootNode, sheet_.Title, kSheetImage);
  DataSheetTree.SetExpanded(sheet_.RootNode, true);
  DataSheetTree.SetExpanded(sheet_.SheetNode, true);
  DataSheetTree.SetSorted(sheet_.SheetNode, mnuSorted.Checked());
  ShowChanged();
}

void frmDataSheetTree::ShowChanged() {
  DataSheetTree.SetMarked(sheet_.SheetNode, sheet_.Modified);
}

std::optional<frmDataSheetTree::Place> frmDataSheetTree::SelectedItem() const {
  const TreeNode selected = DataSheetTree.Selected();
  if (selected == kNoNode) return std::nullopt;
  for (const ItemKind kind : kSearchOrder) {
    for (int slot = 0; slot < sheet_.*RowOf(kind).count; ++slot) {
      const Place place{kind, slot};
      if (RecordAt(place).TreeNode == selected) return place;
    }
  }
  return std::nullopt;
}

ItemRecord& frmDataSheetTree::RecordAt(const Place& place) const {
  return RowOf(place.kind).record(sheet_, place.slot);
}

std::optional<std::string> frmDataSheetTree::SelectedName() const {
  const TreeNode selected = DataSheetTree.Selected();
  if (selected != kNoNode && selected == sheet_.SheetNode) return sheet_.Title;
  const auto place = SelectedItem();
  return place ? std::optional(RecordAt(*place).Name) : std::nullopt;
}

void frmDataSheetTree::PopupMenuFor() {
  const bool exists = DataSheetTree.Exists(sheet_.SheetNode);
  for (MenuEntry* entry : {&mnuSaveDataSheet, &mnuSaveDataSheetAs, &mnuAddNew, &mnuSorted}) {
    entry->SetEnabled(exists);
  }
  const auto name = exists ? SelectedName() : std::nullopt;
  for (MenuEntry* entry : {&mnuRename, &barBeforeRemove, &mnuRemove, &barBeforeSorted}) {
    entry->SetVisible(name.has_value());
  }
  if (name) {
    const std::string shown = "(" + PlainCaption(Utf8Of(*name)) + ")";
    mnuRemove.SetCaption("&Remove" + shown);
    mnuRename.SetCaption("Re&name" + shown);
  }
  pop_mnu1.Popup();
}

void frmDataSheetTree::KeyDown(int code) {
  if (code == kF2Key) DataSheetTree.StartLabelEdit();
  if (code == kDeleteKey) RemoveByKey();
  if (code == kEnterKey) SetActiveForm();
}

// A key is pressed by mistake more easily than a menu entry, so data is not removed without a
// question.
void frmDataSheetTree::RemoveByKey() {
  const TreeNode meant = DataSheetTree.Selected();
  const auto place = SelectedItem();
  if (place && RecordAt(*place).HasData) {
    const Message question{.text = "Remove " + RecordAt(*place).Name + "?",
                           .icon = MessageIcon::Question,
                           .buttons = MessageButtons::YesNo};
    if (context_.prompts.Show(question) != MessageAnswer::Yes) return;
  }
  if (DataSheetTree.Selected() == meant) mnuRemove_Click();
}

void frmDataSheetTree::mnuRemove_Click() {
  const TreeNode selected = DataSheetTree.Selected();
  if (selected != kNoNode && selected == sheet_.SheetNode) {
    RemoveSheet();
  } else if (const auto place = SelectedItem()) {
    const TreeNode next = NeighbourOf(selected);
    DataSheetTree.Remove(selected);
    DataSheetTree.Select(next);
    files.Remove(place->kind, place->slot);
    files.SheetExists();
    // The views that moved up have come to the front.
    DataSheetTree.SetFocus();
  }
}

// The node below, or the last one above, or the sheet's: where the next key is meant to act.
TreeNode frmDataSheetTree::NeighbourOf(TreeNode node) const {
  const std::vector<TreeNode> shown = DataSheetTree.Children(sheet_.SheetNode);
  const auto at = std::ranges::find(shown, node);
  if (shown.size() < 2 || at == shown.end()) return sheet_.SheetNode;
  return at + 1 == shown.end() ? *(at - 1) : *(at + 1);
}

void frmDataSheetTree::RemoveSheet() {
  if (!file.AskAboutChanges()) return;
  file.Leave();
  DataSheetTree.Remove(sheet_.SheetNode);
  files.CloseAllItems();
  files.SheetExists();
}

// The order holds for every sheet until the program ends. It does not change the slots.
void frmDataSheetTree::mnuSorted_Click() {
  mnuSorted.SetChecked(!mnuSorted.Checked());
  DataSheetTree.SetSorted(sheet_.SheetNode, mnuSorted.Checked());
}

void frmDataSheetTree::ChangeFormName(std::string& newText) {
  const TreeNode selected = DataSheetTree.Selected();
  if (selected == sheet_.RootNode) {
    newText = kRootText;
    context_.prompts.Show({.text = "Name of Root Can't Change", .icon = MessageIcon::Exclamation});
    return;
  }
  if (selected == sheet_.SheetNode) {
    sheet_.Title = newText;
    sheet_.Modified = true;
    return;
  }
  const auto place = SelectedItem();
  if (!place) return;
  RecordAt(*place).Name = newText;
  ViewToFront(*place, newText);
  sheet_.Modified = true;
}

void frmDataSheetTree::SetActiveForm() {
  const auto place = SelectedItem();
  if (place) ViewToFront(*place, DataSheetTree.Text(DataSheetTree.Selected()));
}

void frmDataSheetTree::ViewToFront(const Place& place, const std::string& caption) {
  ItemView* view = files.View(place.kind, place.slot);
  if (view == nullptr) return;
  view->SetCaption(caption);
  view->BringToFront();
}

}  // namespace oriolemark

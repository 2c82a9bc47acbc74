#pragma once

#include <optional>
#include <string>

#include "datasheet/FileFunc.h"
#include "documents/DocumentFile.h"
#include "platform/Form.h"
#include "platform/MenuEntry.h"
#include "platform/PopupMenu.h"
#include "platform/TreeView.h"

namespace oriolemark {

// "Untitle" stays: users know the word.
inline constexpr const char* kNewTitle = "Untitle";

// The objects that the Data Browser uses.
struct BrowserContext {
  DataSheet& sheet;
  TransferScratch& scratch;
  Prompts& prompts;
  RecoveredFiles& recovered;
  SyncFile sync;
};

// The Data Browser. It shows the sheet as a tree, opens its views and brings them to the front, and
// has the sheet's file commands (SheetFileCommands.cpp).
class frmDataSheetTree : public Form {
 public:
  explicit frmDataSheetTree(const BrowserContext& context);

  TreeView DataSheetTree;
  MenuEntry mnuNewDataSheet, mnuOpenDataSheet, mnuSaveDataSheet, mnuSaveDataSheetAs;
  MenuEntry mnuAddNew, mnuAddNewWaveform, mnuAddNewMeasure, mnuAddNewData;
  MenuEntry mnuRename, barBeforeRemove, mnuRemove, barBeforeSorted, mnuSorted;
  PopupMenu pop_mnu1;
  FileFunc files;
  DocumentFile file;

  void Form_Load() override;

  // Each of these but Save first asks about unsaved changes.
  void mnuNewDataSheet_Click();
  // Empties the sheet before its dialog opens. If the user cancels the dialog, the nodes of the
  // items stay and lead nowhere, and Save asks for a name until the next New or Open.
  void mnuOpenDataSheet_Click();
  void OpenDataSheet(const std::string& path);
  void mnuSaveDataSheet_Click() { file.Save(); }

  // Applies the edit of the selected node's label. The root keeps its name.
  void ChangeFormName(std::string& newText);
  // Brings the view of the selected item to the front.
  void SetActiveForm();

 private:
  struct Place {
    ItemKind kind;
    int slot;
  };

  bool HasContents() const;
  void BuildMenu();
  void PopupMenuFor();
  void KeyDown(int code);
  void mnuRemove_Click();
  void mnuSorted_Click();
  void RemoveByKey();
  TreeNode NeighbourOf(TreeNode node) const;
  void RemoveSheet();
  void UseFile(const std::string& path);
  void RebuildSheetTree();
  void AddSheetNode();
  void ShowChanged();
  std::optional<Place> SelectedItem() const;
  // The name of the selected sheet or item, 8-bit. Nothing if neither is selected.
  std::optional<std::string> SelectedName() const;
  void ViewToFront(const Place& place, const std::string& caption);
  ItemRecord& RecordAt(const Place& place) const;

  BrowserContext context_;
  DataSheet& sheet_;
  bool sheetModelReady_ = false;  // a sheet has been made since the program started
};

}  // namespace oriolemark

#pragma once

#include <functional>
#include <string>

#include "datasheet/FileFunc.h"
#include "platform/Form.h"
#include "platform/TreeView.h"

namespace oriolemark {

// The Data Browser. It shows the sheet as a tree, opens its views and brings them to the front.
class frmDataSheetTree : public Form {
 public:
  frmDataSheetTree(DataSheet& sheet, Prompts& prompts);

  TreeView DataSheetTree;
  FileFunc files;

  void Form_Load() override;

  // Makes a new, empty sheet.
  void mnuNewDataSheet_Click();
  // Applies the edit of the selected node's label. The root keeps its name.
  void ChangeFormName(std::string& newText);
  // Brings the view of the selected item to the front.
  void SetActiveForm();

 private:
  // Unloads every open view and empties the three lists. The records keep their contents.
  void CloseAllItems();
  void AddSheetNode();
  // Calls `act` for each item whose node is selected. `view` is null for a kind without windows.
  void ForSelected(const std::function<void(ItemRecord& record, ItemView* view)>& act);

  DataSheet& sheet_;
  Prompts& prompts_;
  bool sheetModelReady_ = false;  // a sheet has been made since the program started
};

}  // namespace oriolemark

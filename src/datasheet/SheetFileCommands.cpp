// The file commands of the data sheet.

#include "datasheet/frmDataSheetTree.h"

namespace oriolemark {

// The changes stay marked as unsaved after the answer No, so the next command asks again.
void frmDataSheetTree::mnuNewDataSheet_Click() {
  if (!file.AskAboutChanges()) return;
  file.Leave();
  files.CloseAllItems();
  sheet_.Title = kNewTitle;
  file.UseNone();
  DataSheetTree.Remove(sheet_.SheetNode);
  AddSheetNode();
  files.SheetExists();
}

void frmDataSheetTree::OpenDataSheet(const std::string& path) {
  if (!file.AskAboutChanges()) return;
  file.Leave();
  files.CloseAllItems();
  UseFile(path);
}

void frmDataSheetTree::mnuOpenDataSheet_Click() {
  if (!file.AskAboutChanges()) return;
  file.Leave(DocumentFile::LastWord::Later);
  files.CloseAllItems();
  const std::string path = file.AskOpenName();
  if (path.empty()) {
    file.UseNothing();
  } else {
    UseFile(path);
  }
}

void frmDataSheetTree::UseFile(const std::string& path) {
  file.Use(path);
  RebuildSheetTree();
  sheet_.Modified = false;
  files.SheetExists();
}

void frmDataSheetTree::RebuildSheetTree() {
  DataSheetTree.Remove(sheet_.SheetNode);
  AddSheetNode();
  for (const ItemKind kind : kTreeOrder) {
    for (int slot = 0; slot < sheet_.*RowOf(kind).count; ++slot) {
      files.ShowView(kind, slot);
      files.AddNode(kind, slot);
    }
  }
}

}  // namespace oriolemark

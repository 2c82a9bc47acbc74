#pragma once

#include <array>
#include <string>
#include <vector>

#include "datasheet/records/ItemKinds.h"
#include "platform/Button.h"
#include "platform/Form.h"
#include "platform/OptionGroup.h"

namespace oriolemark {

namespace doc_type {
inline constexpr int kDataSheet = 1;
inline constexpr int kController = 2;
inline constexpr int kFirstItem = 3;  // the kinds of items, in the order of the tree
}  // namespace doc_type

// A modal dialog with the group "File Type". The types are numbered from 1 in the order of their
// captions. If no option is selected, OK chooses the last type.
class DocTypeDialog : public Form {
 public:
  DocTypeDialog(const std::string& caption, std::vector<std::string> types)
      : Types(std::move(types)),
        NewOption(static_cast<int>(Types.size())),
        cmdOK([this] { cmdOK_Click(); }),
        cmdCancel([this] { Unload(); }) {
    SetCaption(caption);
  }

  const std::vector<std::string> Types;
  OptionGroup NewOption;
  Button cmdOK;
  Button cmdCancel;
  int DocType = 0;  // the type that was accepted last

  void Form_Load() override { NewOption.Select(0); }

 private:
  void cmdOK_Click() {
    const int chosen = NewOption.Selected();
    DocType = chosen == OptionGroup::kNone ? NewOption.Count() : chosen + 1;
    Accept();
  }
};

class frmNewDoc : public DocTypeDialog {
 public:
  frmNewDoc() : DocTypeDialog("New", NewTypes()) {}

 private:
  static std::vector<std::string> NewTypes() {
    std::vector<std::string> types{"Data Sheet", "Controller"};
    for (const ItemKind kind : kTreeOrder) types.push_back(RowOf(kind).newType);
    return types;
  }
};

class frmOpenDoc : public DocTypeDialog {
 public:
  frmOpenDoc() : DocTypeDialog("Open", {"Data Sheet", "Controller"}) {}
};

}  // namespace oriolemark

#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/Button.h"
#include "platform/Form.h"
#include "platform/OptionGroup.h"

namespace oriolemark {

// The choice of the dialogs that ask for a type of document, and whether it was accepted.
struct DocChoice {
  int DocType = 0;
  bool accepted = false;
};

namespace doc_type {
inline constexpr int kDataSheet = 1;
inline constexpr int kController = 2;
inline constexpr int kWaveform = 3;
inline constexpr int kMeasure = 4;
inline constexpr int kWaveData = 5;
}  // namespace doc_type

// A modal dialog with the group "File Type". The types are numbered from 1 in the order of their
// captions; with no option chosen, OK gives the last one.
class DocTypeDialog : public Form {
 public:
  DocTypeDialog(const std::string& caption, std::vector<std::string> types, DocChoice& choice)
      : Types(std::move(types)),
        NewOption(static_cast<int>(Types.size())),
        cmdOK([this] { cmdOK_Click(); }),
        cmdCancel([this] { Unload(); }),
        choice_(choice) {
    SetCaption(caption);
  }

  const std::vector<std::string> Types;
  OptionGroup NewOption;
  Button cmdOK;
  Button cmdCancel;

  void Form_Load() override { NewOption.Select(0); }

 private:
  void cmdOK_Click() {
    const int chosen = NewOption.Selected();
    choice_.DocType = chosen == OptionGroup::kNone ? NewOption.Count() : chosen + 1;
    choice_.accepted = true;
    Unload();
  }

  DocChoice& choice_;
};

class frmNewDoc : public DocTypeDialog {
 public:
  explicit frmNewDoc(DocChoice& choice)
      : DocTypeDialog("New", {"Data Sheet", "Controller", "Waveform", "Measure", "Wave Data"},
                      choice) {}
};

class frmOpenDoc : public DocTypeDialog {
 public:
  explicit frmOpenDoc(DocChoice& choice)
      : DocTypeDialog("Open", {"Data Sheet", "Controller"}, choice) {}
};

}  // namespace oriolemark

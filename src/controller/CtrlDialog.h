#pragma once

#include <array>
#include <functional>
#include <string>

#include "controller/CtrlTreeNodeFunc.h"
#include "controller/records/CtrlDocument.h"
#include "link/TX5000Cmd.h"
#include "platform/Button.h"
#include "platform/ComboBox.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/TextBox.h"

namespace oriolemark {

// What an edit of the instrument needs.
struct CtrlDialogContext {
  CtrlSettings& settings;
  CtrlDocument& document;
  CtrlTreeNodeFunc& nodes;
  TX5000Cmd& scope;
  Waiting& waiting;
  Prompts& prompts;
};

// The modal dialog that changes one setting, in the document and on the instrument at once. In the
// list layout the user picks a value. In the time layout the user types a number; a unit key
// multiplies it and confirms.
class CtrlDialog : public Form {
 public:
  static constexpr std::array<const char*, 4> kUnitKeys = {"m", "u", "n", "p"};

  explicit CtrlDialog(const CtrlDialogContext& context);

  Label Frame;  // the label of the setting
  ComboBox Combo{ComboStyle::ListOnly};
  TextBox inputTxt;
  std::array<Button, kUnitKeys.size()> cmdEnter;
  Button cmdOK;
  Button cmdCancel;

  // Names the setting that OK applies. With an unknown key, OK sends nothing. It still marks the
  // document as changed and closes the dialog.
  std::string CtrlDialogKey;

  void Form_Load() override { applying_ = false; }

  enum class Layout { List, Time };
  void UseLayout(Layout layout);

 private:
  // A confirmed edit: its setting, and the text to send.
  struct Edit {
    const Parameter& parameter;
    std::string text;
  };
  using Step = void (CtrlDialog::*)(Edit& edit);
  struct Row;

  static const Row* RowOf(Field field);
  void cmdEnter_Click(std::size_t index);
  void cmdOK_Click();
  bool IsNumber();

  // The steps of the edits.
  void TakeTime(Edit& edit);       // the number as a time
  void TakeDelay(Edit& edit);      // like TakeTime, but limited to what the time base allows
  void Store(Edit& edit);          // the text into the field
  void Repair(Edit& edit);         // the field's text onto its node
  void Send(Edit& edit);           // the text to the instrument
  void Ask(Edit& edit);            // the instrument's answer into the field
  void SendRunState(Edit& edit);   // as a key press if single shots are armed
  void SendRangeIfOn(Edit& edit);  // sends the channel's range again if the channel is on
  void ReadRange(Edit& edit);      // reads the channel's range for its new probe, after a pause
  void GetTimeBaseParameter(Edit& edit);
  void ReadType(Edit& edit);
  void GetTriggerMethod(Edit& edit);
  void Rebuild(Edit& edit);

  void AskFor(Field field);
  void AskAndRepair(Field field);

  CtrlDialogContext context_;
  bool applying_ = false;  // an edit is running and asks the instrument; another click does nothing
};

}  // namespace oriolemark

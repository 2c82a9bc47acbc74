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

// What an edit of the instrument rests on.
struct CtrlDialogContext {
  CtrlSettings& settings;
  CtrlDocument& document;
  CtrlTreeNodeFunc& nodes;
  TX5000Cmd& scope;
  Waiting& waiting;
  Prompts& prompts;
};

// The modal dialog that changes one setting, in the document and on the instrument at once. In the
// list layout a value is picked, in the time layout a number is typed; its unit keys multiply it
// and confirm.
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

  // Names the setting that OK applies.
  std::string CtrlDialogKey;

  enum class Layout { List, Time };
  void UseLayout(Layout layout);

 private:
  // What a confirmed edit does, in the order of its setting's row.
  enum class Step {
    TakeTime,       // the number as a time; one that is none ends the edit with the dialog open
    TakeDelay,      // the same, limited to what the time base allows
    Store,          // the text into the field
    Repair,         // the field onto its node
    Send,           // the text to the instrument
    Ask,            // the instrument's answer into the field
    SendRunState,   // the run state, as a key press where single shots are armed
    SendRangeIfOn,  // the channel's range again, once it is on
    ReadRange,      // after a pause, the channel's range under its new probe
    ReadTimeBase,
    ReadType,
    ReadTrigger,
    Rebuild
  };
  struct Row;

  static const Row* RowOf(Field field);
  void cmdEnter_Click(std::size_t index);
  void cmdOK_Click();
  // False ends the edit.
  bool Apply(Step step, const Parameter& parameter, std::string& text);
  bool IsNumber();
  void Ask(Field field);
  void AskAndRepair(Field field);
  void SendRunState(const std::string& text);
  void GetTriggerMethod();
  void GetTimeBaseParameter();

  CtrlDialogContext context_;
};

}  // namespace oriolemark

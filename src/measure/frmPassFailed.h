#pragma once

#include <optional>
#include <string>

#include "datasheet/records/DataSheet.h"
#include "measure/Quantities.h"
#include "platform/Button.h"
#include "platform/CheckBox.h"
#include "platform/ComboBox.h"
#include "platform/Prompts.h"
#include "platform/TextBox.h"
#include "platform/Timer.h"

namespace oriolemark {

class Waiting;

// The modal dialog with the limits of one measure item. It works on a copy of the record. OK writes
// the whole copy back; Cancel drops it.
class frmPassFailed : public Form {
 public:
  frmPassFailed(DataSheet& sheet, EventSource& events, Waiting& waiting, Prompts& prompts);

  // Shows the dialog for the item in this slot until it is closed. If OK has written the limits,
  // returns the slot where the item is by then. Returns nothing if they were not written: after
  // Cancel, or because the item has been removed.
  std::optional<int> Ask(int slot, const std::string& name);

  ComboBox MTypeCombo;  // the quantities
  CheckBox EnabledChk;
  TextBox UnderNum;
  ComboBox UnderUnit;
  Control UnderPic;
  TextBox OverNum;
  ComboBox OverUnit;
  Control OverPic;
  Button OKButton;
  Button CancelButton;
  Timer Timer1;  // ticks once after the load, and then fills the dialog

  void Form_Load() override;

 protected:
  void Form_Unload() override { Timer1.SetEnabled(false); }

 private:
  // One limit: its controls, and its place in the record.
  struct Limit {
    TextBox& number;
    ComboBox& unit;
    Control& picture;
    double MeasureValue::*field;
  };

  MeasureValue& Value();
  void Timer1_Timer();
  void MTypeCombo_Change();
  void EnabledChk_Click();
  void OKButton_Click();
  void ShowLimits();
  // The user has typed in the box or chosen a unit.
  void Edited(const Limit& limit);
  void SetNum(const Limit& limit);
  // The present slot of the item that the dialog was opened for.
  std::optional<int> SlotNow() const;

  DataSheet& sheet_;
  Waiting& waiting_;
  Prompts& prompts_;
  const Limit under_{UnderNum, UnderUnit, UnderPic, &MeasureValue::Under};
  const Limit over_{OverNum, OverUnit, OverPic, &MeasureValue::Over};
  const Quantity* quantity_ = kQuantities.data();
  MeasureRecord record_;  // the copy
  int slot_ = 0;
  bool edits_ = false;  // the boxes hold what the user typed; false while the dialog fills them
};

}  // namespace oriolemark

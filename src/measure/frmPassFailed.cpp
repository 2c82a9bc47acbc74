#include "measure/frmPassFailed.h"

#include <cmath>
#include <vector>

#include "platform/Waiting.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

// The order of the dialog is not that of the list. The captions are the same.
constexpr const char* kDialogOrder[] = {
    "Vpp",       "Vmax",      "Vmin",         "Vavg",         "Vamp",      "Vrms",
    "Vtop",      "Vbase",     "Vpre",         "Vover",        "Frequency", "Period",
    "Rise Time", "Fall Time", "+Pulse Width", "-Pulse Width", "+Duty",     "-Duty"};

constexpr int kFirstTick = 1;  // ms

// A minus sign may stand in front of any number, also of one that has a sign.
std::string WithoutMinus(const std::string& text) {
  return text.starts_with('-') ? text.substr(1) : text;
}

}  // namespace

frmPassFailed::frmPassFailed(DataSheet& sheet, EventSource& events, Waiting& waiting,
                             Prompts& prompts)
    : MTypeCombo(ComboStyle::ListOnly, [this] { MTypeCombo_Change(); }),
      EnabledChk([this] { EnabledChk_Click(); }),
      UnderNum([this] { Edited(under_); }),
      UnderUnit(ComboStyle::ListOnly, [this] { Edited(under_); }),
      OverNum([this] { Edited(over_); }),
      OverUnit(ComboStyle::ListOnly, [this] { Edited(over_); }),
      OKButton([this] { OKButton_Click(); }),
      CancelButton([this] { Unload(); }),
      Timer1(events, kFirstTick, [this] { Timer1_Timer(); }),
      sheet_(sheet),
      waiting_(waiting),
      prompts_(prompts) {}

std::optional<int> frmPassFailed::Ask(int slot, const std::string& name) {
  if (Loaded()) return std::nullopt;
  slot_ = slot;
  SetCaption("Pass & Fail Setting [" + name + "]");
  if (!AskModal(waiting_)) return std::nullopt;
  return slot_;
}

void frmPassFailed::Form_Load() {
  edits_ = false;
  Timer1.SetEnabled(true);
}

void frmPassFailed::Timer1_Timer() {
  Timer1.SetEnabled(false);
  record_ = sheet_.Measures[static_cast<std::size_t>(slot_)];
  MTypeCombo.SetItems({std::begin(kDialogOrder), std::end(kDialogOrder)});
  MTypeCombo.SetListIndex(0);
}

MeasureValue& frmPassFailed::Value() {
  return record_.Values[quantity_->index];
}

void frmPassFailed::MTypeCombo_Change() {
  const Quantity* chosen = QuantityNamed(MTypeCombo.Text());
  if (chosen == nullptr) return;
  quantity_ = chosen;
  EnabledChk.SetValue(Value().Enabled);
  ShowLimits();
}

void frmPassFailed::EnabledChk_Click() {
  Value().Enabled = EnabledChk.Value();
  ShowLimits();
}

void frmPassFailed::ShowLimits() {
  const UnitFamily& family = quantity_->family;
  edits_ = false;
  for (const Limit* limit : {&under_, &over_}) {
    const UnitBoxText shown = family.toBox(Value().*limit->field);
    limit->unit.SetItems({family.units.begin(), family.units.end()});
    limit->number.SetText(shown.text);
    limit->unit.SetListIndex(shown.index);
    const bool enabled = Value().Enabled;
    limit->number.SetEnabled(enabled);
    limit->unit.SetEnabled(enabled);
    limit->picture.SetEnabled(enabled);
  }
  edits_ = true;
}

void frmPassFailed::Edited(const Limit& limit) {
  const std::string& text = limit.number.Text();
  // A sign alone is a number that is being typed.
  const std::string digits = WithoutMinus(text);
  if (!edits_ || digits.empty()) return;
  if (IsNumeric(digits)) {
    SetNum(limit);
    return;
  }
  prompts_.Show({.text = "Invalid Numeric", .icon = MessageIcon::Critical});
  limit.number.SetText("");
}

// A text that the conversion refuses, such as "1." in volts, or a number above all doubles leaves
// the limit as it was.
void frmPassFailed::SetNum(const Limit& limit) {
  const Converted value = quantity_->family.toNumber(limit.number.Text() + limit.unit.Text());
  if (value.ConvertValid && std::isfinite(value.value)) Value().*limit.field = value.value;
}

std::optional<int> frmPassFailed::SlotNow() const {
  for (int slot = 0; slot < sheet_.MeasureCount; ++slot) {
    if (sheet_.Measures[static_cast<std::size_t>(slot)].TreeNode == record_.TreeNode) return slot;
  }
  return std::nullopt;
}

void frmPassFailed::OKButton_Click() {
  const std::optional<int> slot = SlotNow();
  // Before the tick, the copy is of an item of before.
  if (!slot || Timer1.Enabled()) {
    Unload();
    return;
  }
  slot_ = *slot;
  sheet_.Measures[static_cast<std::size_t>(slot_)] = record_;
  sheet_.Modified = true;
  Accept();
}

}  // namespace oriolemark

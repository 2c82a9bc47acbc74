#include "controller/CtrlDialog.h"

#include <algorithm>
#include <vector>

#include "link/StringRES.h"
#include "values/Number.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

using S = CtrlSettings;

constexpr std::array<double, CtrlDialog::kUnitKeys.size()> kUnitFactors = {0.001, 1e-6, 1e-9,
                                                                           1e-12};
constexpr Milliseconds kProbePause(200);

// The settings that are asked for after a trigger method has been chosen.
struct MethodRow {
  TriggerShape shape;
  std::vector<Field> settings;
};

const MethodRow kMethodRows[] = {
    {TriggerShape::Edge,
     {&S::TrigSource, &S::TrigSlope, &S::TrigMode, &S::TrigCoupling, &S::TrigLevel}},
    {TriggerShape::Pulse,
     {&S::TrigSource, &S::PulseMode, &S::PulseWidth, &S::TrigMode, &S::TrigCoupling,
      &S::TrigLevel}},
    {TriggerShape::Video,
     {&S::TrigSource, &S::VideoPolarity, &S::VideoSync, &S::LineNumber, &S::VideoStandard}},
};

}  // namespace

struct CtrlDialog::Row {
  std::vector<Step> steps;
  std::vector<Field> fields;
};

// The rows store, send, ask and repair in different orders on purpose: the order shows on the wire.
// Many of them show a value in the tree before it is sent.
const CtrlDialog::Row* CtrlDialog::RowOf(Field field) {
  using D = CtrlDialog;
  static const Row kRows[] = {
      {{&D::Store, &D::Repair, &D::SendRunState}, {&S::RunStop}},
      {{&D::Store, &D::Repair, &D::Send, &D::SendRangeIfOn}, {&S::CH1Display, &S::CH2Display}},
      {{&D::Store, &D::Repair, &D::Send, &D::ReadRange}, {&S::CH1Probe, &S::CH2Probe}},
      {{&D::Store, &D::Repair, &D::Send},
       {&S::CH1VoltDiv,    &S::CH1Offset, &S::CH1Coupling, &S::CH1BWLimit,    &S::CH1Invert,
        &S::CH2VoltDiv,    &S::CH2Offset, &S::CH2Coupling, &S::CH2BWLimit,    &S::CH2Invert,
        &S::TrigSource,    &S::TrigMode,  &S::TrigLevel,   &S::TrigCoupling,  &S::TrigSlope,
        &S::VideoPolarity, &S::VideoSync, &S::LineNumber,  &S::VideoStandard, &S::PulseMode}},
      {{&D::Send, &D::Ask, &D::Repair, &D::GetTimeBaseParameter, &D::ReadType}, {&S::TimeDiv}},
      {{&D::TakeTime, &D::Send, &D::GetTimeBaseParameter}, {&S::Holdoff}},
      {{&D::TakeDelay, &D::Send, &D::GetTimeBaseParameter}, {&S::TimeDelay}},
      {{&D::Send, &D::Ask, &D::Repair, &D::GetTimeBaseParameter}, {&S::TimeFormat}},
      {{&D::Send, &D::Store, &D::GetTriggerMethod, &D::Rebuild, &D::Repair}, {&S::TrigMethod}},
      {{&D::TakeTime, &D::Send, &D::Ask, &D::Repair}, {&S::PulseWidth}},
      {{&D::Send, &D::Ask, &D::Repair}, {&S::SamplingMode, &S::DisplayType}},
      {{&D::Send, &D::Store, &D::Repair},
       {&S::Acquisition, &S::Averages, &S::Intensity, &S::AntiAliasing, &S::Persist, &S::Grid}},
  };
  for (const Row& row : kRows) {
    if (std::ranges::count(row.fields, field) != 0) return &row;
  }
  return nullptr;
}

CtrlDialog::CtrlDialog(const CtrlDialogContext& context)
    : cmdOK([this] { cmdOK_Click(); }), cmdCancel([this] { Unload(); }), context_(context) {
  SetCaption("DSO Controller");
  for (std::size_t i = 0; i < cmdEnter.size(); ++i) {
    cmdEnter[i].SetClick([this, i] { cmdEnter_Click(i); });
  }
}

void CtrlDialog::UseLayout(Layout layout) {
  const bool list = layout == Layout::List;
  Combo.SetVisible(list);
  inputTxt.SetVisible(!list);
  for (Button& key : cmdEnter) key.SetVisible(!list);
}

bool CtrlDialog::IsNumber() {
  if (IsNumeric(inputTxt.Text())) return true;
  context_.prompts.Show({.text = "Enter number only", .icon = MessageIcon::Exclamation});
  return false;
}

void CtrlDialog::cmdEnter_Click(std::size_t index) {
  if (applying_ || !IsNumber()) return;
  inputTxt.SetText(NumberText(LeadingNumber(inputTxt.Text()) * kUnitFactors[index]));
  cmdOK_Click();
}

void CtrlDialog::cmdOK_Click() {
  if (applying_) return;
  const Parameter* parameter = FindParameterByKey(CtrlDialogKey);
  const Row* row = parameter != nullptr ? RowOf(parameter->field) : nullptr;
  if (row != nullptr) {
    const bool time = parameter->kind == ValueKind::Time;
    if (time && !IsNumber()) return;
    Edit edit{*parameter, time ? inputTxt.Text() : Combo.Text()};
    applying_ = true;
    for (const Step step : row->steps) (this->*step)(edit);
  }
  context_.document.CtrlChanged = true;
  Unload();
}

void CtrlDialog::TakeTime(Edit& edit) {
  edit.text = ConvertTimeToUnitStr(LeadingNumber(edit.text));
}

void CtrlDialog::TakeDelay(Edit& edit) {
  edit.text = ConvertTrigOffsetToStr(LeadingNumber(edit.text), [this](std::string_view command) {
    return context_.scope.AskScope(command);
  });
}

void CtrlDialog::Store(Edit& edit) {
  context_.settings.*edit.parameter.field = edit.text;
}

void CtrlDialog::Repair(Edit& edit) {
  context_.nodes.Repair(edit.parameter.field);
}

void CtrlDialog::Send(Edit& edit) {
  context_.scope.SendToScope(edit.parameter.Setting(edit.text));
}

void CtrlDialog::Ask(Edit& edit) {
  AskFor(edit.parameter.field);
}

void CtrlDialog::SendRangeIfOn(Edit& edit) {
  if (context_.settings.*edit.parameter.field != DropFirstChar(kOn)) return;
  const Field range = VoltDivOf(edit.parameter.group);
  context_.scope.SendToScope(ParameterOf(range).Setting(context_.settings.*range));
}

void CtrlDialog::ReadRange(Edit& edit) {
  context_.waiting.Sleep(kProbePause);
  AskAndRepair(VoltDivOf(edit.parameter.group));
}

// If single shots are armed, the run command is sent as a key press.
void CtrlDialog::SendRunState(Edit& edit) {
  const CtrlSettings& settings = context_.settings;
  const bool keyPress =
      settings.TrigMode == DropFirstChar(kSingle) && settings.RunStop == DropFirstChar(kRun);
  const std::string command = edit.parameter.Setting(edit.text);
  context_.scope.SendToScope(keyPress ? std::string(kKey) + kRun : command);
}

void CtrlDialog::GetTimeBaseParameter(Edit&) {
  for (const Field field : {&S::TimeDelay, &S::Holdoff, &S::MemorySize}) AskAndRepair(field);
}

void CtrlDialog::ReadType(Edit&) {
  AskAndRepair(&S::DisplayType);
}

void CtrlDialog::GetTriggerMethod(Edit&) {
  const TriggerShape shape = ShapeOf(context_.settings.TrigMethod);
  for (const MethodRow& row : kMethodRows) {
    if (row.shape != shape) continue;
    for (const Field field : row.settings) AskFor(field);
  }
}

void CtrlDialog::Rebuild(Edit&) {
  context_.nodes.SaveTreeExpansion();
  context_.nodes.BuildCtrlTree();
  context_.nodes.RestoreTreeExpansion();
}

void CtrlDialog::AskFor(Field field) {
  const Parameter& parameter = ParameterOf(field);
  context_.settings.*field = parameter.FromReply(context_.scope.AskScope(parameter.Question()));
}

void CtrlDialog::AskAndRepair(Field field) {
  AskFor(field);
  context_.nodes.Repair(field);
}

}  // namespace oriolemark

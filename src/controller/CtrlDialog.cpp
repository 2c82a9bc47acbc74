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

// What each method of the trigger is asked for after it has been chosen.
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

// The order of storing, sending, asking and repairing shows on the wire and differs on purpose.
const CtrlDialog::Row* CtrlDialog::RowOf(Field field) {
  using enum Step;
  static const Row kRows[] = {
      {{Store, Repair, SendRunState}, {&S::RunStop}},
      {{Store, Repair, Send, SendRangeIfOn}, {&S::CH1Display, &S::CH2Display}},
      {{Store, Repair, Send, ReadRange}, {&S::CH1Probe, &S::CH2Probe}},
      {{Store, Repair, Send},
       {&S::CH1VoltDiv,    &S::CH1Offset, &S::CH1Coupling, &S::CH1BWLimit,    &S::CH1Invert,
        &S::CH2VoltDiv,    &S::CH2Offset, &S::CH2Coupling, &S::CH2BWLimit,    &S::CH2Invert,
        &S::TrigSource,    &S::TrigMode,  &S::TrigLevel,   &S::TrigCoupling,  &S::TrigSlope,
        &S::VideoPolarity, &S::VideoSync, &S::LineNumber,  &S::VideoStandard, &S::PulseMode}},
      {{Send, Ask, Repair, ReadTimeBase, ReadType}, {&S::TimeDiv}},
      {{TakeTime, Send, ReadTimeBase}, {&S::Holdoff}},
      {{TakeDelay, Send, ReadTimeBase}, {&S::TimeDelay}},
      {{Send, Ask, Repair, ReadTimeBase}, {&S::TimeFormat}},
      {{Send, Store, ReadTrigger, Rebuild, Repair}, {&S::TrigMethod}},
      {{TakeTime, Send, Ask, Repair}, {&S::PulseWidth}},
      {{Send, Ask, Repair}, {&S::SamplingMode, &S::DisplayType}},
      {{Send, Store, Repair},
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
  if (!IsNumber()) return;
  inputTxt.SetText(NumberText(LeadingNumber(inputTxt.Text()) * kUnitFactors[index]));
  cmdOK_Click();
}

void CtrlDialog::cmdOK_Click() {
  const Parameter* parameter = FindParameterByKey(CtrlDialogKey);
  const Row* row = parameter != nullptr ? RowOf(parameter->field) : nullptr;
  if (row != nullptr) {
    std::string text = parameter->kind == ValueKind::Time ? inputTxt.Text() : Combo.Text();
    for (const Step step : row->steps) {
      if (!Apply(step, *parameter, text)) return;
    }
  }
  context_.document.CtrlChanged = true;
  Unload();
}

bool CtrlDialog::Apply(Step step, const Parameter& parameter, std::string& text) {
  CtrlSettings& settings = context_.settings;
  std::string& field = settings.*parameter.field;
  TX5000Cmd& scope = context_.scope;
  switch (step) {
    case Step::TakeTime:
      if (!IsNumber()) return false;
      text = ConvertTimeToUnitStr(LeadingNumber(text));
      break;
    case Step::TakeDelay:
      if (!IsNumber()) return false;
      text = ConvertTrigOffsetToStr(LeadingNumber(text), [&scope](std::string_view command) {
        return scope.AskScope(command);
      });
      break;
    case Step::Store:
      field = text;
      break;
    case Step::Repair:
      context_.nodes.Repair(parameter.field);
      break;
    case Step::Send:
      scope.SendToScope(parameter.Setting(text));
      break;
    case Step::Ask:
      Ask(parameter.field);
      break;
    case Step::SendRunState:
      SendRunState(text);
      break;
    case Step::SendRangeIfOn: {
      const Field range = VoltDivOf(parameter.group);
      if (field == DropFirstChar(kOn)) {
        scope.SendToScope(ParameterOf(range).Setting(settings.*range));
      }
      break;
    }
    case Step::ReadRange:
      context_.waiting.Sleep(kProbePause);
      AskAndRepair(VoltDivOf(parameter.group));
      break;
    case Step::ReadTimeBase:
      GetTimeBaseParameter();
      break;
    case Step::ReadType:
      AskAndRepair(&S::DisplayType);
      break;
    case Step::ReadTrigger:
      GetTriggerMethod();
      break;
    case Step::Rebuild:
      context_.nodes.SaveTreeExpansion();
      context_.nodes.BuildCtrlTree();
      context_.nodes.RestoreTreeExpansion();
      break;
  }
  return true;
}

void CtrlDialog::Ask(Field field) {
  const Parameter& parameter = ParameterOf(field);
  context_.settings.*field = parameter.FromReply(context_.scope.AskScope(parameter.Question()));
}

void CtrlDialog::AskAndRepair(Field field) {
  Ask(field);
  context_.nodes.Repair(field);
}

// While single shots are armed, running again is a key press.
void CtrlDialog::SendRunState(const std::string& text) {
  const CtrlSettings& settings = context_.settings;
  const bool keyPress =
      settings.TrigMode == DropFirstChar(kSingle) && settings.RunStop == DropFirstChar(kRun);
  const std::string command = ParameterOf(&S::RunStop).Setting(text);
  context_.scope.SendToScope(keyPress ? std::string(kKey) + kRun : command);
}

void CtrlDialog::GetTriggerMethod() {
  const TriggerShape shape = ShapeOf(context_.settings.TrigMethod);
  for (const MethodRow& row : kMethodRows) {
    if (row.shape != shape) continue;
    for (const Field field : row.settings) Ask(field);
  }
}

void CtrlDialog::GetTimeBaseParameter() {
  for (const Field field : {&S::TimeDelay, &S::Holdoff, &S::MemorySize}) AskAndRepair(field);
}

}  // namespace oriolemark

// Runs the edit of the setting that the clicked node's text names.

#include "controller/frmCtrlList.h"
#include "link/StringRES.h"
#include "values/Number.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

constexpr int kFewestLines = 525;  // of NTSC
constexpr int kMostLines = 625;

// The labels in a node's path, and the value in its text.
struct NodeText {
  std::string_view group;
  std::string_view item;
  std::string value;
};

std::string_view DropLast(std::string_view text) {
  return text.substr(0, text.empty() ? 0 : text.size() - 1);
}

NodeText TakeApart(std::string_view path) {
  const std::size_t root = path.find('\\');
  std::string_view rest = path.substr(root == std::string_view::npos ? path.size() : root + 1);
  NodeText text;
  const std::size_t end = rest.find('\\');
  text.group = rest.substr(0, end);
  if (end != std::string_view::npos) rest.remove_prefix(end + 1);
  const std::size_t bracket = rest.find('[');
  text.item = rest;
  if (bracket != std::string_view::npos) {
    text.item = DropLast(rest.substr(0, bracket));
    text.value = DropLast(rest.substr(bracket + 1));
  }
  return text;
}

// "1", "2" and so on, each with the unit.
std::vector<std::string> Counted(int last, const char* unit) {
  std::vector<std::string> rows;
  for (int i = 1; i <= last; ++i) rows.push_back(std::to_string(i) + unit);
  return rows;
}

}  // namespace

void frmCtrlList::PraseCtrlList(std::string_view path) {
  const NodeText text = TakeApart(path);
  dialog.UseLayout(CtrlDialog::Layout::List);
  if (const Parameter* parameter = FindParameter(text.group, text.item)) {
    EditParameter(*parameter, text.value);
    return;
  }
  struct CommandRow {
    const char* group;
    const char* item;
    void (frmCtrlList::*run)();
  };
  const char* const running = kGroupLabels[ctrl_group::kRunningControl];
  const CommandRow commands[] = {
      {running, kAutoSetLabel, &frmCtrlList::AutoSet},
      {running, kSetTrig50Label, &frmCtrlList::SetTrig50},
      {running, kForceTriggerLabel, &frmCtrlList::ForceTrigger},
      {kVirtualPanelLabel, kVirtualPanelLabel, &frmCtrlList::ShowVirtualPanel},
  };
  for (const CommandRow& row : commands) {
    if (text.group == row.group && text.item == row.item) {
      (this->*row.run)();
      return;
    }
  }
}

void frmCtrlList::EditParameter(const Parameter& parameter, const std::string& value) {
  if (parameter.kind == ValueKind::Query) {
    context_.prompts.Show({.text = "This Item Query Only", .icon = MessageIcon::Exclamation});
    return;
  }
  dialog.Frame.SetText(parameter.label);
  if (parameter.kind == ValueKind::Time) {
    dialog.UseLayout(CtrlDialog::Layout::Time);
    dialog.inputTxt.SetText(ConvertTimeStrToExp(value));
  } else {
    dialog.Combo.SetItems({});
    FillCombo(parameter);
    // A value that is not in the list selects nothing.
    dialog.Combo.SetText(value);
  }
  dialog.CtrlDialogKey = parameter.Key();
  dialog.ShowModal(context_.waiting);
}

void frmCtrlList::FillCombo(const Parameter& parameter) {
  const CtrlSettings& settings = context_.settings;
  switch (parameter.kind) {
    case ValueKind::TimeDiv:
      SetCtrlDialogTimeDivNum(parameter);
      break;
    case ValueKind::VoltDiv:
      SetCtrlDialogVoltDivNum(settings.*ProbeOf(parameter.group));
      break;
    case ValueKind::Division:
      SetCtrlDialogTrigLevelNum();
      break;
    case ValueKind::LineNumber: {
      const bool isNtsc = settings.VideoStandard == DropFirstChar(kNTSC);
      dialog.Combo.AddItems(Counted(isNtsc ? kFewestLines : kMostLines, ""));
      break;
    }
    case ValueKind::Percent:
      dialog.Combo.AddItems(Counted(100, "%"));
      break;
    default: {
      const bool isEdge = ShapeOf(settings.TrigMethod) == TriggerShape::Edge;
      const bool dropLast = parameter.kind == ValueKind::Source && !isEdge;
      const auto values = parameter.values.first(parameter.values.size() - (dropLast ? 1 : 0));
      dialog.Combo.AddItems({values.begin(), values.end()});
    }
  }
}

void frmCtrlList::SetCtrlDialogTimeDivNum(const Parameter& timeDiv) {
  dialog.Combo.AddItems({timeDiv.values.begin(), timeDiv.values.end()});
}

void frmCtrlList::SetCtrlDialogVoltDivNum(const std::string& probe) {
  const auto rows = VoltDivs(probe);
  dialog.Combo.AddItems({rows.begin(), rows.end()});
}

void frmCtrlList::SetCtrlDialogTrigLevelNum() {
  std::vector<std::string> rows;
  // Rounding errors add up in this sum. With them the list has 601 rows and a plain 0.00 in its
  // middle.
  for (double divisions = 12.0; divisions >= -12.0; divisions += -0.04) {
    rows.push_back(FormatFixed(divisions, 2, 2) + "div");
  }
  dialog.Combo.AddItems(rows);
}

}  // namespace oriolemark

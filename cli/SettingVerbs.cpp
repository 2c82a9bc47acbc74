// The verbs that read and change the instrument's settings.

#include <algorithm>
#include <cmath>
#include <optional>

#include "cli/Job.h"
#include "cli/Names.h"
#include "controller/records/ControlFile.h"
#include "link/TX5000Cmd.h"
#include "values/Number.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

using S = CtrlSettings;

std::string GroupOf(const Parameter& parameter) {
  return kGroupLabels[static_cast<std::size_t>(parameter.group)];
}
std::string NameOf(const Parameter& parameter) {
  return GroupOf(parameter) + " " + parameter.label;
}

// Null, and a message, if the name fits no setting or several.
const Parameter* Find(const Job& job, const std::string& name) {
  std::string plain = Plain(name);
  const std::string root = Plain(kCtrlRootLabel);
  if (plain.starts_with(root)) plain.erase(0, root.size());
  std::vector<std::string> names;
  std::vector<const Parameter*> labelled;
  for (const Parameter& row : Parameters()) {
    if (Plain(NameOf(row)) == plain || Plain(row.Question()) == plain) return &row;
    if (Plain(row.label) == plain) labelled.push_back(&row);
    names.push_back(NameOf(row));
  }
  if (labelled.size() == 1) return labelled.front();
  if (!labelled.empty()) names.clear();
  for (const Parameter* row : labelled) names.push_back(NameOf(*row));
  const std::string known = labelled.empty() ? "There is no setting \"" : "Several settings are \"";
  job.Explain(known + name + "\". " + DidYouMean(labelled.empty() ? name : names.front(), names));
  return nullptr;
}

std::string Read(const Job& job, const Parameter& parameter) {
  return parameter.FromReply(job.session->Ask(parameter.Question()));
}

// The settings on which the edit of a setting depends: the program looks at them when it offers
// values or sends the choice.
struct Dependence {
  Field edited;
  Field on;
};
constexpr Dependence kDependences[] = {
    {&S::RunStop, &S::TrigMode},         {&S::CH1VoltDiv, &S::CH1Probe},
    {&S::CH2VoltDiv, &S::CH2Probe},      {&S::CH1Display, &S::CH1VoltDiv},
    {&S::CH2Display, &S::CH2VoltDiv},    {&S::TrigSource, &S::TrigMethod},
    {&S::LineNumber, &S::VideoStandard},
};

// Whether two texts mean the same value: the same text in any case, or the same number with the
// same unit. The wanted one may leave the unit out.
bool Same(const std::string& wanted, const std::string& value) {
  if (Plain(wanted) == Plain(value) && IsNumeric(wanted) == IsNumeric(value)) return true;
  const auto unitOf = [](const std::string& text) {
    return text.substr(std::min(text.find_first_not_of(" +-.0123456789"), text.size()));
  };
  const auto isNumber = [&unitOf](const std::string& text) {
    return IsNumeric(text.substr(0, text.size() - unitOf(text).size()));
  };
  const std::string unit = unitOf(wanted);
  return isNumber(wanted) && isNumber(value) && LeadingNumber(wanted) == LeadingNumber(value) &&
         (unit.empty() || unit == unitOf(value));
}

struct Assignment {
  const Parameter& parameter;
  std::string wanted;
  std::string offered{};  // the values to choose from, if the wanted one is not among them
};

// A time as it is typed into the dialog. Empty if it is none.
std::string TypedTime(const std::string& text) {
  return IsNumeric(text) ? text : ConvertTimeStrToExp(text);
}

std::string Listed(const std::vector<std::string>& values) {
  constexpr std::size_t kMost = 40;
  std::string list;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values.size() > kMost && i >= 3 && i + 3 < values.size()) {
      if (i == 3) list += ", ...";
      continue;
    }
    list += (list.empty() ? "" : ", ") + values[i];
  }
  return list;
}

// Works the dialog as a user does: the value and OK, or Cancel if it is not offered.
void Choose(CtrlDialog& dialog, Assignment& assignment) {
  if (assignment.parameter.kind == ValueKind::Time) {
    dialog.inputTxt.SetText(TypedTime(assignment.wanted));
    dialog.cmdOK.Click();
    return;
  }
  const auto& items = dialog.Combo.Items();
  const auto item = std::ranges::find_if(
      items, [&](const std::string& offered) { return Same(assignment.wanted, offered); });
  if (item == items.end()) {
    assignment.offered = Listed(items);
    dialog.cmdCancel.Click();
    return;
  }
  assignment.wanted = *item;
  dialog.Combo.SetText(assignment.wanted);
  dialog.cmdOK.Click();
}

// Runs the Controller's edit of the setting.
void Edit(Job& job, Assignment& assignment) {
  const Parameter& parameter = assignment.parameter;
  MainModule& program = job.session->Program();
  for (const Dependence& row : kDependences) {
    if (row.edited == parameter.field) program.settings.*row.on = Read(job, ParameterOf(row.on));
  }
  if (job.session->Failed()) return;
  frmCtrlList& controller = program.controller;
  Timer hand(job.desk.events, 1, [&] {
    hand.SetEnabled(false);
    Choose(controller.dialog, assignment);
  });
  hand.SetEnabled(true);
  controller.PraseCtrlList(std::string(kCtrlRootLabel) + "\\" + GroupOf(parameter) + "\\" +
                           parameter.label);
}

bool Took(const Assignment& assignment, const std::string& reply) {
  if (assignment.parameter.kind != ValueKind::Time) return Same(assignment.wanted, reply);
  const double wanted = LeadingNumber(TypedTime(assignment.wanted));
  const Converted now = ConvertStrToTime(reply);
  // The instrument shows four digits.
  return now.ConvertValid && std::abs(now.value - wanted) <= std::abs(wanted) * 0.001;
}

// Nothing, and a message, if a name is no setting.
std::optional<std::vector<const Parameter*>> WantedOf(const Job& job) {
  std::vector<const Parameter*> wanted;
  for (const std::string& name : job.call.names) {
    wanted.push_back(Find(job, name));
    if (wanted.back() == nullptr) return std::nullopt;
  }
  if (!wanted.empty()) return wanted;
  for (const Parameter& parameter : Parameters()) wanted.push_back(&parameter);
  return wanted;
}

// Nothing, and a message, if a text is no assignment.
std::optional<std::vector<Assignment>> AssignmentsOf(const Job& job) {
  std::vector<Assignment> assignments;
  for (const std::string& text : job.call.names) {
    const std::size_t mark = text.find('=');
    if (mark == std::string::npos) {
      job.Explain("\"" + text + "\" is no assignment. Write NAME=VALUE.");
      return std::nullopt;
    }
    const Parameter* const parameter = Find(job, text.substr(0, mark));
    if (parameter == nullptr) return std::nullopt;
    const std::string wanted = text.substr(mark + 1);
    if (parameter->kind == ValueKind::Query) {
      job.Explain(NameOf(*parameter) + " can only be read.");
      return std::nullopt;
    }
    if (parameter->kind == ValueKind::Time && TypedTime(wanted).empty()) {
      job.Explain("\"" + wanted + "\" is no time. Write 500us or 0.0005.");
      return std::nullopt;
    }
    assignments.push_back({*parameter, wanted});
  }
  return assignments;
}

Result SetRunState(Job& job, const char* state) {
  Assignment assignment{ParameterOf(&S::RunStop), state};
  Edit(job, assignment);
  return {};
}

}  // namespace

ExitCode CheckGet(Job& job) {
  return WantedOf(job) ? ExitCode::Success : ExitCode::Usage;
}

Result RunGet(Job& job) {
  Result result;
  for (const Parameter* parameter : WantedOf(job).value_or(std::vector<const Parameter*>())) {
    result.values.push_back({NameOf(*parameter), Read(job, *parameter)});
  }
  return result;
}

ExitCode CheckSet(Job& job) {
  return AssignmentsOf(job) ? ExitCode::Success : ExitCode::Usage;
}

Result RunSet(Job& job) {
  std::vector<Assignment> assignments = AssignmentsOf(job).value_or(std::vector<Assignment>());
  for (Assignment& assignment : assignments) {
    Edit(job, assignment);
    if (job.session->Failed()) return {};
    if (assignment.offered.empty()) continue;
    return job.Refuse(ExitCode::Usage, NameOf(assignment.parameter) + " has no value \"" +
                                           assignment.wanted + "\". Choose " + assignment.offered +
                                           ".");
  }
  Result result;
  for (const Assignment& assignment : assignments) {
    const std::string reply = Read(job, assignment.parameter);
    result.values.push_back({NameOf(assignment.parameter), reply});
    if (Took(assignment, reply) || job.session->Failed()) continue;
    result.code = ExitCode::Refused;
    job.Explain("The instrument refused " + NameOf(assignment.parameter) + "=" + assignment.wanted +
                ".");
  }
  return result;
}

Result RunDownload(Job& job) {
  MainModule& program = job.session->Program();
  program.controller.cmdDownload.Click();
  return {.files = {{"", [&program] { return ControlFileText(program.settings); }}}};
}

ExitCode CheckUpload(Job& job) {
  job.session->Program().controller.OpenCtrl(job.call.input);
  if (!job.session->Failed()) return ExitCode::Success;
  job.Explain("\"" + job.call.input + "\" could not be read.");
  return ExitCode::File;
}

Result RunUpload(Job& job) {
  job.session->Program().controller.cmdUpload.Click();
  return {};
}

Result RunRun(Job& job) {
  return SetRunState(job, "RUN");
}

Result RunStop(Job& job) {
  return SetRunState(job, "STOP");
}

}  // namespace oriolemark

// The verbs that read and change the instrument's settings.

#include <algorithm>
#include <cmath>
#include <optional>

#include "cli/Job.h"
#include "cli/Names.h"
#include "controller/records/ControlFile.h"
#include "link/TX5000Cmd.h"
#include "platform/Files.h"
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
  job.Explain(known + name + "\"." + DidYouMean(labelled.empty() ? name : names.front(), names));
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

// The number in a setting's text, in its base unit. A text that people or programs write may leave
// the unit out.
Converted NumberOf(ValueKind kind, const std::string& text) {
  const auto plain = [&text](std::string_view unit) {
    const bool hasUnit = text.ends_with(unit);
    const auto number = NumberInReply(text.substr(0, text.size() - (hasUnit ? unit.size() : 0)));
    return Converted{number.value_or(0), number.has_value()};
  };
  if (IsNumeric(text)) return {LeadingNumber(text), true};
  switch (kind) {
    case ValueKind::VoltDiv:
      return ConvertStrToVolt(text);
    case ValueKind::TimeDiv:
    case ValueKind::Time:
      return ConvertStrToTime(text);
    case ValueKind::Division:
      return plain("div");
    case ValueKind::Percent:
      return plain("%");
    default:
      return {};
  }
}

// Whether a text means this value: the same number, or the same word in any case.
bool Same(const Parameter& parameter, const std::string& wanted, const std::string& value) {
  const Converted first = NumberOf(parameter.kind, wanted);
  const Converted second = NumberOf(parameter.kind, value);
  if (!first.ConvertValid || !second.ConvertValid) return Folded(wanted) == Folded(value);
  constexpr double kRounding = 1e-9;
  return std::abs(first.value - second.value) <= kRounding * std::abs(second.value);
}

// The form of a setting for programs: the unit and the number, for the kinds that have them.
Value ValueOf(const Parameter& parameter, const std::string& text) {
  struct Row {
    ValueKind kind;
    const char* unit;
  };
  constexpr Row kUnits[] = {{ValueKind::VoltDiv, "V"},
                            {ValueKind::TimeDiv, "s"},
                            {ValueKind::Time, "s"},
                            {ValueKind::Division, "div"},
                            {ValueKind::Percent, "percent"}};
  Value value{NameOf(parameter), text};
  for (const Row& row : kUnits) {
    if (row.kind != parameter.kind) continue;
    value.unit = row.unit;
    const Converted number = NumberOf(parameter.kind, text);
    if (number.ConvertValid) value.number = number.value;
  }
  return value;
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
  const auto item = std::ranges::find_if(items, [&](const std::string& offered) {
    return Same(assignment.parameter, assignment.wanted, offered);
  });
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
  Timer hand(job.desk.events, 1, [&] {
    hand.SetEnabled(false);
    Choose(program.controller.dialog, assignment);
  });
  hand.SetEnabled(true);
  job.session->EditNode(GroupOf(parameter) + "\\" + parameter.label);
}

bool Took(const Assignment& assignment, const std::string& reply) {
  if (assignment.parameter.kind != ValueKind::Time)
    return Same(assignment.parameter, assignment.wanted, reply);
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

std::string NotOffered(const Parameter& parameter, const std::string& wanted,
                       const std::string& offered) {
  return NameOf(parameter) + " has no value \"" + wanted + "\". Choose " + offered + ".";
}

// Why the setting cannot be set to this text, as far as is known without the instrument. Empty if
// it may be.
std::string Objection(const Parameter& parameter, const std::string& wanted) {
  if (parameter.kind == ValueKind::Query) return NameOf(parameter) + " can only be read.";
  if (parameter.kind == ValueKind::Time && TypedTime(wanted).empty()) {
    return "\"" + wanted + "\" is no time. Write 500us or 0.0005.";
  }
  const bool isFixed = parameter.kind == ValueKind::List || parameter.kind == ValueKind::TimeDiv;
  const auto fits = [&](const char* value) { return Same(parameter, wanted, value); };
  if (!isFixed || std::ranges::any_of(parameter.values, fits)) return {};
  return NotOffered(parameter, wanted, Listed({parameter.values.begin(), parameter.values.end()}));
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
    std::string objection = Objection(*parameter, text.substr(mark + 1));
    for (const Assignment& earlier : assignments) {
      if (&earlier.parameter == parameter) objection = NameOf(*parameter) + " is set twice.";
    }
    if (!objection.empty()) {
      job.Explain(objection);
      return std::nullopt;
    }
    assignments.push_back({*parameter, text.substr(mark + 1)});
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
    result.values.push_back(ValueOf(*parameter, Read(job, *parameter)));
  }
  return result;
}

ExitCode CheckSet(Job& job) {
  return AssignmentsOf(job) ? ExitCode::Success : ExitCode::Usage;
}

Result RunSet(Job& job) {
  std::vector<Assignment> assignments = AssignmentsOf(job).value_or(std::vector<Assignment>());
  std::string before;
  for (Assignment& assignment : assignments) {
    Edit(job, assignment);
    if (job.session->Failed()) return {};
    if (assignment.offered.empty()) {
      before += " " + NameOf(assignment.parameter) + "=" + assignment.wanted;
      continue;
    }
    std::string refusal = NotOffered(assignment.parameter, assignment.wanted, assignment.offered);
    if (!before.empty()) refusal += " Before it were set:" + before + ".";
    return job.Refuse(ExitCode::Usage, refusal);
  }
  Result result;
  for (const Assignment& assignment : assignments) {
    const std::string reply = Read(job, assignment.parameter);
    result.values.push_back(ValueOf(assignment.parameter, reply));
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

// A value that is missing would be sent as the program's default, so a part of a file would reset
// the instrument.
ExitCode CheckUpload(Job& job) {
  const std::string& path = job.call.input;
  const auto refuse = [&](const char* text) {
    job.Explain("\"" + path + "\" " + text);
    return ExitCode::File;
  };
  if (!job.desk.fileExists(path)) return refuse("does not exist.");
  const auto whole = std::ranges::count(ControlFileText({}), '\n');
  const FileContents file = ReadFile(path, std::size_t{1} << 20);
  job.session->Program().controller.OpenCtrl(path);
  if (job.session->Failed()) return refuse("could not be read.");
  std::ptrdiff_t values = 0;
  for (std::string_view rest = file.bytes; !rest.empty();) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (line.starts_with('"') && line.rfind('"') > 0) ++values;
  }
  return values < whole ? refuse("is not whole: values are missing.") : ExitCode::Success;
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

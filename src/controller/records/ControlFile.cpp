#include "controller/records/ControlFile.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "controller/records/Parameters.h"
#include "platform/Files.h"

namespace oriolemark {
namespace {

using S = CtrlSettings;

constexpr const char* kSignature = "Tavik Technologies TX5000 Controller";
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

// The fields in the order of the file. It differs slightly from the order of the record.
constexpr Field kFileOrder[] = {
    &S::RunStop,       &S::CH1Display,   &S::CH1VoltDiv,   &S::CH1Offset,     &S::CH1Coupling,
    &S::CH1BWLimit,    &S::CH1Probe,     &S::CH1Invert,    &S::CH2Display,    &S::CH2VoltDiv,
    &S::CH2Offset,     &S::CH2Coupling,  &S::CH2BWLimit,   &S::CH2Probe,      &S::CH2Invert,
    &S::TimeDiv,       &S::TimeDelay,    &S::Holdoff,      &S::MemorySize,    &S::TimeFormat,
    &S::TrigMethod,    &S::TrigSlope,    &S::TrigSource,   &S::TrigMode,      &S::TrigCoupling,
    &S::VideoPolarity, &S::VideoSync,    &S::LineNumber,   &S::VideoStandard, &S::PulseMode,
    &S::PulseWidth,    &S::TrigLevel,    &S::SamplingMode, &S::Acquisition,   &S::Intensity,
    &S::Averages,      &S::AntiAliasing, &S::DisplayType,  &S::Persist,       &S::Grid,
};

// Takes the next line without its LF and one CR before it. Any other CR is part of the value.
// Returns nothing at the end of the text.
std::optional<std::string_view> TakeLine(std::string_view& text) {
  if (text.empty()) return std::nullopt;
  std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(text.size(), line.size() + 1));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// Takes the next line and returns what is between its first character, which must be a quote, and
// its last quote. A quote inside the value needs no escape.
std::optional<std::string> TakeValue(std::string_view& text) {
  const auto line = TakeLine(text);
  if (!line || !line->starts_with('"')) return std::nullopt;
  const std::size_t last = line->rfind('"');
  if (last == 0) return std::nullopt;
  return std::string(line->substr(1, last - 1));
}

std::string Line(std::string_view value) {
  return '"' + std::string(value) + "\"\r\n";
}

}  // namespace

void ReadControlFile(const std::string& path, CtrlSettings& settings, Prompts& prompts) {
  const FileContents file = ReadFile(path, kMostBytes);
  if (file.error) {
    prompts.Show({.systemText = *file.error, .icon = MessageIcon::Critical});
    return;
  }
  std::string_view rest = file.bytes;
  if (TakeValue(rest) != kSignature) {
    // "Invaild" stays: users know the message.
    prompts.Show({.text = "File Format is Invaild !", .icon = MessageIcon::Critical});
    return;
  }
  for (const Field field : kFileOrder) {
    if (auto value = TakeValue(rest)) settings.*field = *std::move(value);
  }
}

std::string ControlFileText(const CtrlSettings& settings) {
  std::string text = Line(kSignature);
  for (const Field field : kFileOrder) text += Line(settings.*field);
  return text;
}

bool WriteControlFile(const std::string& path, const CtrlSettings& settings, Prompts& prompts,
                      const SyncFile& sync) {
  const auto failure = WriteFile(path, ControlFileText(settings), sync);
  if (failure) prompts.Show({.systemText = failure->text, .icon = MessageIcon::Critical});
  return !failure;
}

}  // namespace oriolemark

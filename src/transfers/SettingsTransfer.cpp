#include "transfers/SettingsTransfer.h"

#include "controller/records/Parameters.h"
#include "link/StringRES.h"

namespace oriolemark {
namespace {

using S = CtrlSettings;

constexpr double kWriteStep = 100.0 / 43;
// The steps of a read add up to more than 100 %. The bar ignores the last ones.
constexpr double kReadStep = 100.0 / 36;

struct WriteRow {
  Field setting;
  int steps = 1;
  // The field whose value is sent. Null to switch a channel on, so that it accepts its settings.
  Field value = setting;
};

constexpr WriteRow SwitchOn(Field display) {
  return {display, 1, nullptr};
}

// The run state and the time base come first. A channel's true display follows its settings, and
// its probe precedes its range. The trigger method precedes the other trigger settings, and the
// level comes last.
constexpr WriteRow kWriteOrder[] = {
    {&S::RunStop},
    {&S::TimeFormat},
    {&S::TimeDiv, 4},
    {&S::TimeDelay},
    {&S::Holdoff, 3},
    SwitchOn(&S::CH1Display),
    {&S::CH1Probe},
    {&S::CH1VoltDiv},
    {&S::CH1Offset},
    {&S::CH1Coupling},
    {&S::CH1BWLimit},
    {&S::CH1Invert},
    {&S::CH1Display},
    SwitchOn(&S::CH2Display),
    // Channel 2 gets the probe of channel 1.
    {&S::CH2Probe, 1, &S::CH1Probe},
    {&S::CH2VoltDiv},
    {&S::CH2Offset},
    {&S::CH2Coupling},
    {&S::CH2BWLimit},
    {&S::CH2Invert},
    {&S::CH2Display},
    {&S::TrigMethod},
    {&S::VideoPolarity},
    {&S::VideoSync},
    {&S::LineNumber, 0},
    {&S::VideoStandard},
    {&S::PulseMode, 0},
    {&S::PulseWidth, 0},
    {&S::TrigSource},
    {&S::TrigSlope},
    {&S::TrigMode},
    {&S::TrigCoupling},
    {&S::TrigLevel},
    {&S::SamplingMode},
    {&S::AntiAliasing},
    {&S::Intensity},
    {&S::Acquisition},
    {&S::Averages},
    {&S::DisplayType},
    {&S::Persist},
    {&S::Grid},
};

struct ReadRow {
  Field setting;
  int steps = 1;
};

constexpr ReadRow kReadOrder[] = {
    {&S::RunStop},       {&S::CH1Display},    {&S::CH1VoltDiv},    {&S::CH1Offset},
    {&S::CH1Coupling},   {&S::CH1BWLimit},    {&S::CH1Probe},      {&S::CH1Invert},
    {&S::CH2Display},    {&S::CH2VoltDiv},    {&S::CH2Offset},     {&S::CH2Coupling},
    {&S::CH2BWLimit},    {&S::CH2Probe},      {&S::CH2Invert},     {&S::TimeDiv},
    {&S::TimeDelay},     {&S::Holdoff, 2},    {&S::MemorySize, 2}, {&S::TimeFormat},
    {&S::TrigMethod},    {&S::TrigSource},    {&S::TrigSlope},     {&S::TrigMode},
    {&S::TrigCoupling},  {&S::VideoPolarity}, {&S::VideoSync},     {&S::LineNumber, 0},
    {&S::VideoStandard}, {&S::TrigLevel},     {&S::PulseMode, 0},  {&S::PulseWidth, 0},
    {&S::SamplingMode},  {&S::AntiAliasing},  {&S::Intensity},     {&S::Acquisition},
    {&S::Averages},      {&S::DisplayType},   {&S::Persist},       {&S::Grid},
};

}  // namespace

void SettingsTransfer::WriteSettings() {
  for (const WriteRow& row : kWriteOrder) {
    const std::string value = row.value != nullptr ? settings_.*row.value : DropFirstChar(kOn);
    scope_.SendToScope(ParameterOf(row.setting).Setting(value));
    Raise(kWriteStep, row.steps);
  }
}

void SettingsTransfer::ReadSettings() {
  for (const ReadRow& row : kReadOrder) {
    const Parameter& parameter = ParameterOf(row.setting);
    settings_.*row.setting = parameter.FromReply(scope_.AskScope(parameter.Question()));
    Raise(kReadStep, row.steps);
  }
  if (buildCtrlTree) buildCtrlTree();
}

void SettingsTransfer::Raise(double step, int steps) {
  for (int i = 0; i < steps; ++i) {
    bar_.SetValue(bar_.Value() + step);
    bar_.Refresh();
    waiting_.DoEvents();
  }
}

}  // namespace oriolemark

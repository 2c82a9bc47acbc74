#include <algorithm>

#include "simulator/Instrument.h"
#include "simulator/Values.h"

namespace tx5000 {
namespace {

constexpr double kPositionStep = 0.2;  // divisions
constexpr double kDelayStep = 0.1;

struct Knob {
  std::string_view command;
  Setting setting;  // that of channel 1, if each channel has one
  int steps;
};

constexpr Knob kKnobs[] = {
    {":KEY:H_SCALE_DEC", Setting::kTimeRange, -1}, {":KEY:H_SCALE_INC", Setting::kTimeRange, 1},
    {":KEY:H_POS_DEC", Setting::kDelay, -1},       {":KEY:H_POS_INC", Setting::kDelay, 1},
    {":KEY:V_SCALE_DEC", Setting::kRange1, -1},    {":KEY:V_SCALE_INC", Setting::kRange1, 1},
    {":KEY:V_POS_DEC", Setting::kOffset1, -1},     {":KEY:V_POS_INC", Setting::kOffset1, 1},
    {":KEY:TRIG_LVL_DEC", Setting::kLevel, -1},    {":KEY:TRIG_LVL_INC", Setting::kLevel, 1},
};

}  // namespace

void Instrument::SelectChannel(Channel channel) {
  selected_ = channel;
  settings_.Set(OfChannel(Setting::kDisplay1, channel), "ON", Turner::kHand);
}

void Instrument::SwitchChannelOff() {
  settings_.Set(OfChannel(Setting::kDisplay1, selected_), "OFF", Turner::kHand);
}

bool Instrument::TurnKnob(std::string_view command) {
  const auto* const knob = std::ranges::find(kKnobs, command, &Knob::command);
  if (knob == std::end(kKnobs)) return false;
  IsRunning();  // a shot that is due still uses the old setting
  const bool vertical = knob->setting == Setting::kRange1 || knob->setting == Setting::kOffset1;
  Step(vertical ? OfChannel(knob->setting, selected_) : knob->setting, knob->steps);
  return true;
}

// A setting at the end of its range stays there.
void Instrument::Step(Setting setting, int steps) {
  if (const auto rows = settings_.Choices(setting); !rows.empty()) {
    const auto last = static_cast<std::ptrdiff_t>(rows.size()) - 1;
    const auto row = std::ranges::find(rows, settings_.Text(setting)) - rows.begin();
    const auto next = std::clamp<std::ptrdiff_t>(row + steps, 0, last);
    settings_.Set(setting, rows[static_cast<std::size_t>(next)], Turner::kHand);
  } else if (setting == Setting::kDelay) {
    const double step = kDelayStep * settings_.Seconds(Setting::kTimeRange);
    settings_.Set(setting, FormatSeconds(settings_.Seconds(setting) + steps * step), Turner::kHand);
  } else {
    const double divisions = settings_.Divisions(setting) + steps * kPositionStep;
    settings_.Set(setting, FormatDivisions(NearestPosition(divisions)), Turner::kHand);
  }
}

}  // namespace tx5000

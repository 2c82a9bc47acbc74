#include <algorithm>
#include <cmath>
#include <variant>

#include "simulator/Instrument.h"
#include "simulator/Values.h"

namespace tx5000 {
namespace {

constexpr double kPositionStep = 0.2;  // divisions
constexpr double kDelayStep = 0.1;

// A time with as many digits as a step needs to be seen, four or more.
std::string FormatDelay(double seconds, double step) {
  int digits = 4;
  std::string text = FormatSeconds(seconds, digits);
  constexpr int kMostDigits = 14;
  while (std::fabs(*ParseSeconds(text) - seconds) > step / 4 && digits < kMostDigits) {
    text = FormatSeconds(seconds, ++digits);
  }
  return text;
}

}  // namespace

// A front key opens a menu, chooses in it, turns a setting or carries out an order.
struct Instrument::Key {
  struct Soft {
    std::size_t number;
  };
  struct Knob {
    Setting setting;  // that of channel 1, if each channel has one
    int steps;
  };

  std::string_view name;
  std::variant<Menu, Soft, Knob, Action> effect;
};

bool Instrument::PressKey(std::string_view name) {
  using Soft = Key::Soft;
  using Knob = Key::Knob;
  static constexpr Key kKeys[] = {
      {"ACQUIRE", Menu::kAcquire},
      {"AUTO", &Instrument::AutoSet},
      {"CH_OFF", &Instrument::SwitchChannelOff},
      {"CH1", Menu::kChannel1},
      {"CH2", Menu::kChannel2},
      {"CURSOR", Menu::kCursor},
      {"DISPLAY", Menu::kDisplay},
      {"F1", Soft{0}},
      {"F2", Soft{1}},
      {"F3", Soft{2}},
      {"F4", Soft{3}},
      {"F5", Soft{4}},
      {"H_SCALE_DEC", Knob{Setting::kTimeRange, -1}},
      {"H_SCALE_INC", Knob{Setting::kTimeRange, 1}},
      {"H_POS_DEC", Knob{Setting::kDelay, -1}},
      {"H_POS_INC", Knob{Setting::kDelay, 1}},
      {"Math", Menu::kMath},
      {"MEASURE", Menu::kMeasure},
      {"PROMPT_V", &Instrument::CentreChannel},
      {"PROMPT_H", &Instrument::CentreTime},
      {"REF", Menu::kReference},
      {"RUN", &Instrument::PressRun},
      {"STORAGE", Menu::kStorage},
      {"MNU_TIME", Menu::kTime},
      {"TRIG%50", &Instrument::SetLevelToMiddle},
      {"FORCE", &Instrument::ForceTrigger},
      {"TRIG_LVL_DEC", Knob{Setting::kLevel, -1}},
      {"TRIG_LVL_INC", Knob{Setting::kLevel, 1}},
      {"MNU_TRIG", Menu::kTrigger},
      {"UTILITY", Menu::kUtility},
      {"V_SCALE_DEC", Knob{Setting::kRange1, -1}},
      {"V_SCALE_INC", Knob{Setting::kRange1, 1}},
      {"V_POS_DEC", Knob{Setting::kOffset1, -1}},
      {"V_POS_INC", Knob{Setting::kOffset1, 1}},
  };
  const auto* const key = std::ranges::find(kKeys, name, &Key::name);
  if (key == std::end(kKeys)) return false;
  IsRunning();  // a shot that is due still uses the old settings
  if (const auto* const menu = std::get_if<Menu>(&key->effect)) {
    OpenMenu(*menu);
  } else if (const auto* const soft = std::get_if<Soft>(&key->effect)) {
    PressSoftKey(soft->number);
  } else if (const auto* const knob = std::get_if<Knob>(&key->effect)) {
    Step(knob->setting, knob->steps);
  } else {
    (this->*std::get<Action>(key->effect))();
  }
  return true;
}

void Instrument::SelectChannel(Channel channel) {
  panel_.selected = channel;
  settings_.Set(OfChannel(Setting::kDisplay1, channel), "ON", Turner::kHand);
}

void Instrument::SwitchChannelOff() {
  settings_.Set(OfChannel(Setting::kDisplay1, panel_.selected), "OFF", Turner::kHand);
}

void Instrument::CentreChannel() {
  settings_.Set(OfChannel(Setting::kOffset1, panel_.selected), FormatDivisions(0), Turner::kHand);
}

void Instrument::CentreTime() {
  settings_.Set(Setting::kDelay, FormatSeconds(0), Turner::kHand);
}

// A setting at the end of its range stays there.
void Instrument::Step(Setting setting, int steps) {
  if (setting == Setting::kRange1 || setting == Setting::kOffset1) {
    setting = OfChannel(setting, panel_.selected);
  }
  if (const auto rows = settings_.Choices(setting); !rows.empty()) {
    const auto last = static_cast<std::ptrdiff_t>(rows.size()) - 1;
    const auto row = std::ranges::find(rows, settings_.Text(setting)) - rows.begin();
    const auto next = std::clamp<std::ptrdiff_t>(row + steps, 0, last);
    settings_.Set(setting, rows[static_cast<std::size_t>(next)], Turner::kHand);
  } else if (setting == Setting::kDelay) {
    const double step = kDelayStep * settings_.Seconds(Setting::kTimeRange);
    const double delay = settings_.Seconds(setting) + steps * step;
    settings_.Set(setting, FormatDelay(delay, step), Turner::kHand);
  } else {
    const double divisions = settings_.Divisions(setting) + steps * kPositionStep;
    settings_.Set(setting, FormatDivisions(NearestPosition(divisions)), Turner::kHand);
  }
}

}  // namespace tx5000

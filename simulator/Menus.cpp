#include <algorithm>
#include <cmath>
#include <utility>
#include <variant>

#include "simulator/Instrument.h"
#include "simulator/Measures.h"
#include "simulator/Values.h"

namespace tx5000 {
namespace {

using Texts = std::span<const std::string_view>;

// The values that a soft key goes through, where the setting itself has too many or no list.
constexpr std::string_view kIntensities[] = {"3%", "25%", "50%", "75%", "100%"};
constexpr std::string_view kHoldoffs[] = {"100ns", "1us", "10us", "100us", "1ms", "10ms"};
constexpr std::string_view kWidths[] = {"100ns", "1us", "10us", "100us", "1ms"};
constexpr std::string_view kWindows[] = {"600", "4000", "17000"};
constexpr std::string_view kMemories[] = {"4000", "8000", "16000"};

// The text behind the one shown, around the end; the first if that is none of them.
std::size_t NextOf(Texts texts, std::string_view shown) {
  const auto found = std::ranges::find(texts, shown);
  return found == texts.end() ? 0
                              : static_cast<std::size_t>(found - texts.begin() + 1) % texts.size();
}

}  // namespace

// A key beside the screen, in one menu. It steps through the values of a setting or option, or does
// something of its own.
struct Instrument::SoftKey {
  // A text and an order, either of which may be missing.
  struct Special {
    std::string (Instrument::*text)() const = nullptr;
    Action press = nullptr;
  };

  std::string_view label;
  // A setting of channel 1 means that of the menu's channel.
  std::variant<std::monostate, Special, Setting, Option> kind;
  Texts values{};  // all that the setting accepts, if empty
};

struct Instrument::MenuRow {
  Menu menu;
  std::string_view title;
  std::array<SoftKey, 5> keys;
  std::string_view method{};  // of the trigger, or empty: for any
};

const Instrument::MenuRow& Instrument::CurrentMenu() const {
  using Special = SoftKey::Special;
  using enum Setting;
  static constexpr std::array<SoftKey, 5> kChannelKeys{{{"Coupling", kCoupling1},
                                                        {"Invert", kInvert1},
                                                        {"BW Limit", kBandwidth1},
                                                        {"Probe", kProbe1},
                                                        {"Display", kDisplay1}}};
  static constexpr MenuRow kMenus[] = {
      {Menu::kChannel1, "CH1", kChannelKeys},
      {Menu::kChannel2, "CH2", kChannelKeys},
      {Menu::kAcquire,
       "ACQUIRE",
       {{{"Mode", kAcquisition},
         {"Averages", kAverages},
         {"Sampling", kSampling},
         {"Anti-alias", kAntiAliasing},
         {"Samples", kWindowMemory, kWindows}}}},
      {Menu::kDisplay,
       "DISPLAY",
       {{{"Type", kType},
         {"Persist", kPersist},
         {"Grid", kGrid},
         {"Intensity", kIntensity, kIntensities},
         {"Menu off", Special{nullptr, &Instrument::HideMenu}}}}},
      {Menu::kCursor,
       "CURSOR",
       {{{"Type", Option::kCursors},
         {"Source", Option::kCursorSource},
         {"Cursor 1", Option::kCursor1},
         {"Cursor 2", Option::kCursor2},
         {"Delta", Special{&Instrument::DeltaText}}}}},
      {Menu::kMeasure,
       "MEASURE",
       {{{"Source", Option::kMeasured},
         {"", Option::kMeasure1},
         {"", Option::kMeasure2},
         {"", Option::kMeasure3},
         {"", Option::kMeasure4}}}},
      {Menu::kStorage,
       "STORAGE",
       {{{"Setup", Option::kSetup},
         {"Save", Special{&Instrument::SetupText, &Instrument::SaveSetup}},
         {"Recall", Special{nullptr, &Instrument::RecallSetup}},
         {"Default", Special{nullptr, &Instrument::RestoreDefaults}},
         {}}}},
      {Menu::kUtility,
       "UTILITY",
       {{{"Model", Special{&Instrument::ModelText}},
         {"Serial No.", Special{&Instrument::SerialText}},
         {"Firmware", Special{&Instrument::FirmwareText}},
         {"Front keys", Special{&Instrument::KeysText}},
         {"Memory", kSystemMemory, kMemories}}}},
      {Menu::kMath, "MATH", {{{"Operation", Option::kMath}, {}, {}, {}, {}}}},
      {Menu::kReference,
       "REF",
       {{{"Source", Option::kReferenceSource},
         {"Save", Special{&Instrument::ReferenceText, &Instrument::SaveReference}},
         {"Show", Option::kReferenceShown},
         {},
         {}}}},
      {Menu::kTime,
       "TIME",
       {{{"Time/Div", kTimeRange},
         {"Delay to 0", Special{nullptr, &Instrument::CentreTime}},
         {"Holdoff", kHoldoff, kHoldoffs},
         {"Format", kFormat},
         {"Roll", kScan}}}},
      {Menu::kTrigger,
       "TRIGGER",
       {{{"Method", kMethod},
         {"Source", kSource},
         {"Slope", kSlope},
         {"Mode", kTrigMode},
         {"Coupling", kTrigCoupling}}},
       "EDGE"},
      {Menu::kTrigger,
       "TRIGGER",
       {{{"Method", kMethod},
         {"Source", kSource},
         {"When", kPulseMode},
         {"Width", kPulseWidth, kWidths},
         {"Mode", kTrigMode}}},
       "PULSE"},
      {Menu::kTrigger,
       "TRIGGER",
       {{{"Method", kMethod},
         {"Source", kSource},
         {"Standard", kStandard},
         {"Sync", kSync},
         {"Polarity", kPolarity}}},
       "VIDEO"},
  };
  return *std::ranges::find_if(kMenus, [&](const MenuRow& row) {
    return row.menu == panel_.menu && (row.method.empty() || settings_.Is(kMethod, row.method));
  });
}

// A channel's own menu works on that channel.
Setting Instrument::SettingOf(Setting setting) const {
  return panel_.menu == Menu::kChannel2 ? OfChannel(setting, Channel::k2) : setting;
}

void Instrument::OpenMenu(Menu menu) {
  panel_.menuShown = !(panel_.menuShown && panel_.menu == menu);
  panel_.menu = menu;
  if (menu == Menu::kChannel1) SelectChannel(Channel::k1);
  if (menu == Menu::kChannel2) SelectChannel(Channel::k2);
}

void Instrument::PressSoftKey(std::size_t number) {
  if (!std::exchange(panel_.menuShown, true)) return;  // nobody sees what the key would change
  const SoftKey& key = CurrentMenu().keys[number];
  if (const auto* const special = std::get_if<SoftKey::Special>(&key.kind)) {
    if (special->press) (this->*special->press)();
  } else if (const auto* const option = std::get_if<Option>(&key.kind)) {
    panel_.At(*option) = NextOf(OptionTexts(*option), panel_.Text(*option));
  } else if (const auto* const first = std::get_if<Setting>(&key.kind)) {
    const Setting setting = SettingOf(*first);
    const Texts values = key.values.empty() ? settings_.Choices(setting) : key.values;
    Turn(Settings::Path(setting), values[NextOf(values, settings_.Text(setting))]);
  }
}

MenuTexts Instrument::DescribeMenu() {
  const MenuRow& row = CurrentMenu();
  MenuTexts menu{std::string(row.title), {}};
  for (std::size_t i = 0; i < row.keys.size(); ++i) {
    const SoftKey& key = row.keys[i];
    MenuTexts::Entry& entry = menu.entries[i];
    entry.label = key.label;
    if (const auto* const special = std::get_if<SoftKey::Special>(&key.kind)) {
      if (special->text) entry.value = (this->*special->text)();
    } else if (const auto* const setting = std::get_if<Setting>(&key.kind)) {
      entry.value = settings_.Text(SettingOf(*setting));
    } else if (const auto* const option = std::get_if<Option>(&key.kind)) {
      entry.value = panel_.Text(*option);
      if (key.label.empty()) entry = DescribeMeasure(entry.value);
    }
  }
  return menu;
}

// The name of a measure, and its reply without name and equal sign.
MenuTexts::Entry Instrument::DescribeMeasure(const std::string& name) {
  const Record& record = CurrentRecord();
  const auto reply = AnswerMeasure(":MEASURE:" + name, settings_, recorded_, record,
                                   panel_.ChannelOf(Option::kMeasured));
  const std::string value = reply.value_or(name).substr(name.size());
  return {name, value.substr(value.starts_with('=') || value.starts_with(' ') ? 1 : 0)};
}

std::string Instrument::DeltaText() const {
  const int divisions =
      std::abs(panel_.DivisionsOf(Option::kCursor1) - panel_.DivisionsOf(Option::kCursor2));
  switch (panel_.ShownCursors()) {
    case Cursors::kVolt: {
      const Channel source = panel_.ChannelOf(Option::kCursorSource);
      return FormatVolts(divisions * settings_.VoltsPerDivision(source), 4);
    }
    case Cursors::kTime:
      return FormatSeconds(divisions * settings_.Seconds(Setting::kTimeRange));
    case Cursors::kOff:
      break;
  }
  return "";
}

void Instrument::SaveSetup() {
  panel_.setups[panel_.At(Option::kSetup)] = settings_;
}

void Instrument::RecallSetup() {
  if (const auto& setup = panel_.setups[panel_.At(Option::kSetup)]) Replace(*setup);
}

void Instrument::RestoreDefaults() {
  Replace(Settings());
}

void Instrument::Replace(const Settings& settings) {
  IsRunning();  // a shot that is due still uses the old settings
  settings_ = settings;
  AfterChange(Setting::kTrigMode);
}

std::string Instrument::SetupText() const {
  return panel_.setups[panel_.At(Option::kSetup)] ? "saved" : "empty";
}

void Instrument::SaveReference() {
  const Record& record = CurrentRecord();
  panel_.reference = TakeSamples(settings_, recorded_, record,
                                 panel_.ChannelOf(Option::kReferenceSource), Trace::kPlain);
}

std::string Instrument::ReferenceText() const {
  return panel_.reference.empty() ? "empty" : "saved";
}

}  // namespace tx5000

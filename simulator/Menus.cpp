#include <algorithm>
#include <utility>
#include <variant>

#include "simulator/Instrument.h"

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

// A key beside the screen, in one menu. It steps through the values of a setting, or does
// something of its own.
struct Instrument::SoftKey {
  // A text and an order, either of which may be missing.
  struct Special {
    std::string (Instrument::*text)() const = nullptr;
    Action press = nullptr;
  };

  std::string_view label;
  // A setting of channel 1 means that of the menu's channel.
  std::variant<std::monostate, Special, Setting> kind;
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
      {Menu::kCursor, "CURSOR", {}},
      {Menu::kMeasure, "MEASURE", {}},
      {Menu::kStorage, "STORAGE", {}},
      {Menu::kUtility,
       "UTILITY",
       {{{"Model", Special{&Instrument::ModelText}},
         {"Serial No.", Special{&Instrument::SerialText}},
         {"Firmware", Special{&Instrument::FirmwareText}},
         {"Front keys", Special{&Instrument::KeysText}},
         {"Memory", kSystemMemory, kMemories}}}},
      {Menu::kMath, "MATH", {}},
      {Menu::kReference, "REF", {}},
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
  } else if (const auto* const first = std::get_if<Setting>(&key.kind)) {
    const Setting setting = SettingOf(*first);
    const Texts values = key.values.empty() ? settings_.Choices(setting) : key.values;
    Turn(Settings::Path(setting), values[NextOf(values, settings_.Text(setting))]);
  }
}

MenuTexts Instrument::DescribeMenu() const {
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
    }
  }
  return menu;
}

}  // namespace tx5000

#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/Acquisition.h"
#include "simulator/Panel.h"
#include "simulator/Screen.h"
#include "simulator/Settings.h"

namespace tx5000 {

// The four fields of the reply to "*IDN?".
struct Identity {
  std::string maker = "TAVIK TECHNOLOGIES";
  std::string model = "TX-5102CA";
  std::string serial = "S1009837";
  std::string firmware = "01.02.05";
};

// A TX5000 oscilloscope without its connectors. It has no clock: its owner reports the time that
// passes. It starts nothing by itself. It must not be used from two threads.
class Instrument {
 public:
  explicit Instrument(Identity identity = {}, std::uint32_t seed = 1);

  // Carries out one command, given without its terminator. Returns the reply without its line end,
  // or nothing if the command has no reply or is not understood. A command that is not understood,
  // also one with a wrong case, blank or value, changes nothing and is counted.
  std::optional<std::string> Execute(std::string_view command);

  // Lets this much time pass; never negative.
  void Advance(std::chrono::milliseconds elapsed);
  std::chrono::milliseconds Now() const { return now_; }

  // The commands not understood since the last ForgetUnknown: their number, and the first of them.
  int UnknownCommands() const { return unknownCount_; }
  const std::vector<std::string>& Unknown() const { return unknown_; }
  void ForgetUnknown();
  // Counts input over a connector that is not a command text at all.
  void NoteUnknown(std::string_view command);

  // Changes a setting as a hand at the front panel would. Takes each setting by its command path,
  // as strictly as a connector does, and also
  // - ":TimeBase:SCAN" ON or OFF, the rolling display; ON slows a fast time base down,
  // - ":DATA:WinMemSize" and ":DATA:SysMemSize", 1 to 17000,
  // - "SIGNAL1" and "SIGNAL2", what is connected, in the words of ParseSignal,
  // - a command that takes no value, such as ":STOP" or ":KEY:RUN", with an empty value.
  // Returns false and changes nothing for anything else. Never counts it as unknown.
  bool Turn(std::string_view path, std::string_view value);

  bool IsRunning();
  bool IsMenuShown() const { return panel_.menuShown; }
  bool AreKeysEnabled() const { return keysEnabled_; }
  const Identity& GetIdentity() const { return identity_; }
  void SetIdentity(Identity identity) { identity_ = std::move(identity); }

  const Settings& GetSettings() const { return settings_; }
  const Inputs& GetInputs() const { return inputs_; }
  void Connect(Channel channel, Signal signal);

  // The record that a block read now would come from. It is new while the instrument runs, and
  // stays the same while it is stopped.
  const Record& CurrentRecord();

  // The screen as ":HARD_COPY" last copied it: kScreenBytes inks in rows from the top. All dark
  // before the first copy.
  const std::vector<std::uint8_t>& ScreenMemory() const { return screenMemory_; }

 private:
  using Action = void (Instrument::*)();
  struct Command;
  static const Command* FindCommand(std::string_view text);

  bool Do(std::string_view command);
  std::optional<std::string> AnswerQuery(std::string_view path);
  std::optional<std::string> AnswerBlock(std::string_view command);
  std::optional<std::string> AnswerMeasureQuery(std::string_view command);
  bool SetFrom(std::string_view command);
  void AfterChange(Setting setting);

  void Run();
  void PressRun();
  void Stop();
  void AutoSet();
  void SetLevelToMiddle();
  void ForceTrigger();
  void ShowMenu() { panel_.menuShown = true; }
  void HideMenu() { panel_.menuShown = false; }
  void EnableKeys() { keysEnabled_ = true; }
  void DisableKeys() { keysEnabled_ = false; }
  void CopyScreen();
  void MeasureChannel1() { panel_.At(Option::kMeasured) = 0; }
  void MeasureChannel2() { panel_.At(Option::kMeasured) = 1; }

  // The front keys. PressKey returns false if there is no key with this name.
  struct Key;
  bool PressKey(std::string_view name);
  void SelectChannel(Channel channel);
  void SwitchChannelOff();
  void CentreChannel();
  void CentreTime();
  void Step(Setting setting, int steps);

  // The menus. A key that has opened its menu closes it.
  struct SoftKey;
  struct MenuRow;
  const MenuRow& CurrentMenu() const;
  Setting SettingOf(Setting setting) const;
  void OpenMenu(Menu menu);
  void PressSoftKey(std::size_t number);
  MenuTexts DescribeMenu();
  MenuTexts::Entry DescribeMeasure(const std::string& name);
  void Replace(const Settings& settings);
  void SaveSetup();
  void RecallSetup();
  void RestoreDefaults();
  void SaveReference();
  std::string DeltaText() const;
  std::string SetupText() const;
  std::string ReferenceText() const;
  std::string ModelText() const { return identity_.model; }
  std::string SerialText() const { return identity_.serial; }
  std::string FirmwareText() const { return identity_.firmware; }
  std::string KeysText() const { return keysEnabled_ ? "enabled" : "locked"; }

  void Start();
  void Acquire();
  void Keep(Record record);
  void TakeFree();
  void FitChannel(Channel channel, double heightDivisions, double centreDivisions);
  void FitTimeBase(Channel source);
  bool WaitsForShot() const;

  Identity identity_;
  Settings settings_;
  Inputs inputs_;
  Record record_;
  Inputs recorded_;  // the signals connected when the record was taken
  std::chrono::milliseconds now_{0};
  std::chrono::milliseconds startedAt_{0};  // start of the present run; times a single shot
  bool running_ = true;
  bool keysEnabled_ = true;
  Panel panel_;
  int unknownCount_ = 0;
  std::vector<std::string> unknown_;
  std::vector<std::uint8_t> screenMemory_;
};

}  // namespace tx5000

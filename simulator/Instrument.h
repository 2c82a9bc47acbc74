#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/Acquisition.h"
#include "simulator/Settings.h"

namespace tx5000 {

// The four fields of the answer to "*IDN?".
struct Identity {
  std::string maker = "TAVIK TECHNOLOGIES";
  std::string model = "TX-5102CA";
  std::string serial = "S1009837";
  std::string firmware = "01.02.05";
};

// A TX5000 oscilloscope without its connectors. It has no clock: its owner tells it how time
// passes. It starts nothing by itself and is not to be used from two threads.
class Instrument {
 public:
  explicit Instrument(Identity identity = {}, std::uint32_t seed = 1);

  // Carries out one command, given without its terminator. The result is the reply without its
  // line end; nothing where the command has no reply or is not understood. What is not understood,
  // a wrong case, blank or value too, changes nothing and is counted.
  std::optional<std::string> Execute(std::string_view command);

  // Time passes. Never negative.
  void Advance(std::chrono::milliseconds elapsed);
  std::chrono::milliseconds Now() const { return now_; }

  // Not understood since the last ForgetUnknown: how many in all, and the first of them.
  int UnknownCommands() const { return unknownCount_; }
  const std::vector<std::string>& Unknown() const { return unknown_; }
  void ForgetUnknown();
  // Counts what came over a connector and is no command text at all.
  void NoteUnknown(std::string_view command);

  // A hand at the instrument. Takes each setting by its wire path, as strictly as the wire, and
  // - ":TimeBase:SCAN" ON or OFF, the rolling display; ON slows a fast time base down,
  // - ":DATA:WinMemSize" and ":DATA:SysMemSize", 1 to 17000,
  // - "SIGNAL1" and "SIGNAL2", what is connected, in the words of ParseSignal,
  // - a command that takes no value, such as ":STOP" or ":KEY:RUN", with an empty value.
  // False, and nothing changed, for anything else. Never counted as unknown.
  bool Turn(std::string_view path, std::string_view value);

  bool IsRunning();
  bool IsMenuShown() const { return menuShown_; }
  bool AreKeysEnabled() const { return keysEnabled_; }
  const Identity& GetIdentity() const { return identity_; }
  void SetIdentity(Identity identity) { identity_ = std::move(identity); }

  const Settings& GetSettings() const { return settings_; }
  const Inputs& GetInputs() const { return inputs_; }
  void Connect(Channel channel, Signal signal);

  // The record that a block read now would be taken from. New while the instrument runs, the same
  // for good while it is stopped.
  const Record& CurrentRecord();

  // What ":HARD_COPY" has last copied: kScreenBytes inks in rows from the top, dark before the
  // first copy.
  const std::vector<std::uint8_t>& ScreenMemory() const { return screenMemory_; }

 private:
  using Action = void (Instrument::*)();
  struct Command;
  static const Command* FindCommand(std::string_view text);

  bool Do(std::string_view command);
  std::optional<std::string> AnswerQuery(std::string_view path);
  std::optional<std::string> AnswerBlock(std::string_view command);
  bool SetFrom(std::string_view command);
  void AfterChange(Setting setting);

  void Run();
  void PressRun();
  void Stop();
  void AutoSet();
  void SetLevelToMiddle();
  void ForceTrigger();
  void ShowMenu() { menuShown_ = true; }
  void HideMenu() { menuShown_ = false; }
  void EnableKeys() { keysEnabled_ = true; }
  void DisableKeys() { keysEnabled_ = false; }
  void CopyScreen();
  void DoNothing() {}
  void SelectChannel1() { SelectChannel(Channel::k1); }
  void SelectChannel2() { SelectChannel(Channel::k2); }
  void SelectChannel(Channel channel);
  void SwitchChannelOff();
  // The keys that step a setting up or down; false for any other command.
  bool TurnKnob(std::string_view command);
  void Step(Setting setting, int steps);

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
  Inputs recorded_;  // what hung on the inputs when the record was taken
  std::chrono::milliseconds now_{0};
  std::chrono::milliseconds startedAt_{0};  // of the present run, for the length of a single shot
  bool running_ = true;
  bool menuShown_ = true;
  bool keysEnabled_ = true;
  Channel selected_ = Channel::k1;  // by its key; the vertical keys are for this one
  int unknownCount_ = 0;
  std::vector<std::string> unknown_;
  std::vector<std::uint8_t> screenMemory_;
};

}  // namespace tx5000

#include <gtest/gtest.h>

#include <tuple>

#include "Bench.h"

namespace {

// Each setting as the wire tells it.
std::string SettingsOf(Bench& bench) {
  std::string settings;
  for (int i = 0; i < static_cast<int>(tx5000::Setting::kCount); ++i) {
    const auto path = tx5000::Settings::Path(static_cast<tx5000::Setting>(i));
    settings += bench.Ask(std::string(path) + ":?") + "\n";
  }
  return settings;
}

// The first one is empty.
constexpr char kMalformed[] =
    ";:;:?;?;*idn?;*IDN? ; *IDN?;:run;:RUN ;:KEY:;:TimeBase:RANGE?;:TimeBase:RANGE: ?;"
    ":TRIGGER:SOURCE:CH2;:DATA:CHANNEL3;:CHANNEL1:RANGE:;:CHANNEL1:RANGE:10.0V;"
    ":CHANNEL1:RANGE: 2.00V;:CHANNEL2:OFFSET:12.04div;:CHANNEL2:OFFSET:0.02div;"
    ":CHANNEL2:OFFSET:-0.00div;:CHANNEL2:OFFSET:4div;:TRIGGER:VIDEO STANDARD:;"
    ":TRIGGER:LINE_NUM:526;:TRIGGER:LINE_NUM:0;:TRIGGER:LINE_NUM:01;:ACQUIRE:INTENSITY:0%;"
    ":ACQUIRE:INTENSITY:101%;:TimeBase:Holdoff:-1ns;:TimeBase:Holdoff:1;:TimeBase:Holdoff:1e3ns;"
    ":TimeBase:Holdoff:.5us;:TimeBase:Holdoff:11s;:TimeBase:TRIGGER DELAY:-2.9ms;"
    ":TimeBase:TRIGGER DELAY:1.1s;:TimeBase:SCAN:ON;:DATA:WinMemSize:4000";

TEST(VocabularyTest, AMalformedCommandIsNotUnderstoodAndChangesNothing) {
  Bench bench;
  const std::string before = SettingsOf(bench);
  for (const std::string& command : Split(kMalformed)) {
    EXPECT_FALSE(bench.Send(command)) << command;
    EXPECT_EQ(SettingsOf(bench), before) << command;
  }
  EXPECT_TRUE(bench.Send(":TimeBase:RANGE:50.00ms;:TRIGGER:METHOD:PULSE"));
  EXPECT_FALSE(bench.Send(":TimeBase:TRIGGER DELAY:0.31s"));
  EXPECT_FALSE(bench.Send(":TRIGGER:Source:AC"));
}

constexpr char kDelay[] = ":TimeBase:TRIGGER DELAY:?";

TEST(VocabularyTest, AWellFormedCommandIsUnderstood) {
  constexpr char kSilent[] =
      ":DISPLAY:MENU STATUS:OFF;:KEY:LOCK:ENABLE;:KEY:LOCK:DISABLE;:KEY:Math;:KEY:TRIG%50;"
      ":KEY:FORCE;:KEY:H_POS_DEC;:KEY:PROMPT_V;:ForceTrig;:TRIG%50;:AUTO";
  EXPECT_TRUE(Bench().Send(kSilent));
  // The command, a query asked afterwards, and its answer.
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"*IDN?", "*IDN?", "TAVIK TECHNOLOGIES,TX-5102CA,S1009837,01.02.05"},
      {":CHANNEL2:OFFSET:-12.00div", ":CHANNEL2:OFFSET:?", "-12.00div"},
      {":CHANNEL2:OFFSET:0.04div", ":CHANNEL2:OFFSET:?", "0.04div"},
      // A switch that can be thrown and does nothing.
      {":CHANNEL1:INVERT:ON", ":CHANNEL1:INVERT:?", "OFF"},
      {":CHANNEL1:PROBE:1000X", ":CHANNEL1:RANGE:?", "1kV"},
      {":TimeBase:TRIGGER DELAY:-140000.0ns", kDelay, "-140000.0ns"},
      {":TimeBase:TRIGGER DELAY:1s", kDelay, "1s"},
      {":ACQUIRE:INTENSITY:100%", ":ACQUIRE:INTENSITY:?", "100%"},
      // Delay and line follow what limits them; mains stays, though it belongs to edges.
      {":TimeBase:TRIGGER DELAY:-2.8ms;:TimeBase:RANGE:10.00us", kDelay, "-140.0us"},
      {":TimeBase:RANGE:50.00ms;:TimeBase:TRIGGER DELAY:0.3s", kDelay, "0.3s"},
      {":TRIGGER:VIDEO STANDARD:PAL/SECAM;:TRIGGER:LINE_NUM:625;:TRIGGER:VIDEO STANDARD:NTSC",
       ":TRIGGER:LINE_NUM:?", "525"},
      {":TRIGGER:Source:AC;:TRIGGER:METHOD:PULSE", ":TRIGGER:Source:?", "AC"}};
  for (const auto& [command, query, answer] : cases) {
    Bench bench;
    EXPECT_TRUE(bench.Send(command)) << command;
    EXPECT_EQ(bench.Ask(query), answer) << command;
  }
}

TEST(VocabularyTest, AHandReachesWhatTheWireCanOnlyAsk) {
  Bench bench;
  for (const auto& [path, value] : {std::pair(":DATA:WinMemSize", "0"),
                                    {":DATA:WinMemSize", "17001"},
                                    {":CHANNEL1:RANGE", "3.00V"},
                                    {"SIGNAL3", "sine"},
                                    {"SIGNAL1", "sine 0"},
                                    {"SIGNAL1", "sine 1000 1 1"}}) {
    EXPECT_FALSE(bench.Turn(path, value)) << path << value;
  }
  EXPECT_EQ(bench.instrument.UnknownCommands(), 0) << "a slip of the hand is no wrong command";
  EXPECT_TRUE(bench.Turn(":DATA:WinMemSize", "17000") && bench.Turn(":KEY:RUN", ""));
  EXPECT_EQ(bench.Read(":DATA:CHANNEL1").size(), 17000u);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP");
}

}  // namespace

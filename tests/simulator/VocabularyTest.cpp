#include <gtest/gtest.h>

#include <tuple>

#include "Bench.h"
#include "simulator/Values.h"

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
    ";:;:?;?;*idn?;*IDN? ; *IDN?;:run;:RUN ;:KEY:MATH;:KEY:;:KEY:LOCK;:timebase:RANGE:?;"
    ":TimeBase:RANGE?;:TimeBase:RANGE: ?;:TRIGGER:SOURCE:CH2;:TRIGGER:Source:ch2;"
    ":DISPLAY:MENU STATUS:off;:DATA:CHANNEL3;:DATA:channel1;:CHANNEL1:RANGE:;:CHANNEL1:RANGE:1V;"
    ":CHANNEL1:RANGE:10.0V;:CHANNEL1:RANGE: 2.00V;:CHANNEL2:OFFSET:12.04div;"
    ":CHANNEL2:OFFSET:0.02div;:CHANNEL2:OFFSET:-0.00div;:CHANNEL2:OFFSET:4div;:TRIGGER:SYNC:LINE;"
    ":TRIGGER:VIDEO STANDARD:;:TRIGGER:LINE_NUM:526;:TRIGGER:LINE_NUM:0;:TRIGGER:LINE_NUM:01;"
    ":ACQUIRE:INTENSITY:0%;:ACQUIRE:INTENSITY:101%;:ACQUIRE:AVERAGES:3;:TimeBase:Holdoff:-1ns;"
    ":TimeBase:Holdoff:1;:TimeBase:Holdoff:1 us;:TimeBase:Holdoff:1e3ns;:TimeBase:Holdoff:.5us;"
    ":TimeBase:Holdoff:us;:TimeBase:Holdoff:11s;:TimeBase:TRIGGER DELAY:-2.9ms;"
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

constexpr char kRange1[] = ":CHANNEL1:RANGE:?";
constexpr char kDelay[] = ":TimeBase:TRIGGER DELAY:?";

TEST(VocabularyTest, AWellFormedCommandIsUnderstood) {
  constexpr char kSilent[] =
      ":DISPLAY:MENU STATUS:OFF;:KEY:LOCK:ENABLE;:KEY:LOCK:DISABLE;:KEY:Math;:KEY:TRIG%50;"
      ":KEY:FORCE;:KEY:H_POS_DEC;:KEY:PROMPT_V;:ForceTrig;:TRIG%50;:AUTO";
  EXPECT_TRUE(Bench().Send(kSilent));
  // The command, a query asked afterwards, and its answer.
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"*IDN?", "*IDN?", "TAVIK TECHNOLOGIES,TX-5102CA,S1009837,01.02.05"},
      {":STOP", ":TRIGGER:STATUS:?", "STOP"},
      {":CHANNEL2:OFFSET:-12.00div", ":CHANNEL2:OFFSET:?", "-12.00div"},
      {":CHANNEL2:OFFSET:0.04div", ":CHANNEL2:OFFSET:?", "0.04div"},
      // A switch that can be thrown and does nothing.
      {":CHANNEL1:INVERT:ON", ":CHANNEL1:INVERT:?", "OFF"},
      {":CHANNEL1:PROBE:10X", kRange1, "10.0V"},
      {":CHANNEL1:PROBE:1000X", kRange1, "1kV"},
      {":CHANNEL1:PROBE:100X", ":CHANNEL2:PROBE:?", "1X"},
      {":CHANNEL2:PROBE:10X", ":CHANNEL2:RANGE:?", "10.0V"},
      {":CHANNEL2:PROBE:10X", ":CHANNEL2:PROBE:?", "10X"},
      {":TimeBase:TRIGGER DELAY:-2.8ms", kDelay, "-2.8ms"},
      {":TimeBase:TRIGGER DELAY:-140000.0ns", kDelay, "-140000.0ns"},
      {":TimeBase:TRIGGER DELAY:1s", kDelay, "1s"},
      {":TimeBase:Holdoff:0.0000s", ":TimeBase:Holdoff:?", "0.0000s"},
      {":TRIGGER:PULSE WIDTH:1.0us", ":TRIGGER:PULSE WIDTH:?", "1.0us"},
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

TEST(VocabularyTest, WhatWasNotUnderstoodIsCountedAndKeptWithinBounds) {
  Bench bench;
  for (int i = 0; i < 250; ++i) bench.Send(":NONSENSE");
  EXPECT_EQ(bench.instrument.UnknownCommands(), 250);
  EXPECT_EQ(bench.instrument.Unknown().size(), 100u);
  EXPECT_FALSE(bench.Turn(":CHANNEL1:RANGE", "3.00V"));
  EXPECT_EQ(bench.instrument.UnknownCommands(), 250) << "a slip of the hand is no wrong command";
}

TEST(VocabularyTest, EachListValueCanBeSetAndReadBack) {
  using tx5000::Setting;
  Bench bench;
  int values = 0;
  for (int i = 0; i < static_cast<int>(Setting::kCount); ++i) {
    const auto setting = static_cast<Setting>(i);
    const std::string path(tx5000::Settings::Path(setting));
    for (const std::string_view value : bench.instrument.GetSettings().Choices(setting)) {
      if (path.ends_with(":INVERT") || path == ":TimeBase:SCAN") continue;
      ++values;
      EXPECT_TRUE(bench.Send(path + ":" + std::string(value))) << path << value;
      EXPECT_EQ(bench.Ask(path + ":?"), value);
    }
  }
  // Two channels of 21, 33 time bases, and the rest of the front panel.
  EXPECT_EQ(values,
            21 + 21 + 33 + 2 + 3 + 4 + 2 + 3 + 4 + 2 + 4 + 2 + 6 + 2 + 4 + 8 + 2 + 2 + 2 + 3);
}

TEST(VocabularyTest, AHandReachesWhatTheWireCanOnlyAsk) {
  Bench bench;
  EXPECT_FALSE(bench.Turn(":DATA:WinMemSize", "0"));
  EXPECT_FALSE(bench.Turn(":DATA:WinMemSize", "17001"));
  EXPECT_TRUE(bench.Turn(":DATA:WinMemSize", "17000"));
  EXPECT_EQ(bench.Ask(":DATA:WinMemSize:?"), "17000");
  EXPECT_EQ(bench.Read(":DATA:CHANNEL1").size(), 17000u);
  EXPECT_TRUE(bench.Turn(":KEY:RUN", ""));
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP");
  EXPECT_FALSE(bench.Turn("SIGNAL3", "sine"));
  EXPECT_FALSE(bench.Turn("SIGNAL1", "sine 0"));
  EXPECT_FALSE(bench.Turn("SIGNAL1", "sine 1000 1 1"));
}

TEST(ValuesTest, TimesAreShownWithFourDigitsAndTheUnitThatFits) {
  const std::pair<double, const char*> cases[] = {
      {0, "0.0000s"},     {-1.4e-4, "-140.0us"}, {9.9999e-4, "1.000ms"}, {0.9999e-3, "999.9us"},
      {5e-10, "0.500ns"}, {0.3, "300.0ms"},      {1, "1.000s"},          {-0.03, "-30.00ms"},
  };
  for (const auto& [seconds, text] : cases) EXPECT_EQ(tx5000::FormatSeconds(seconds), text);
}

}  // namespace

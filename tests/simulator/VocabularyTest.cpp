#include <gtest/gtest.h>

#include "Bench.h"
#include "simulator/Values.h"

namespace {

struct WireCase {
  const char* command;
  bool understood;
  const char* query = "*IDN?";  // asked afterwards
  const char* answer = nullptr;
};

class Vocabulary : public testing::TestWithParam<WireCase> {};

TEST_P(Vocabulary, IsTakenToTheLetter) {
  Bench bench;
  EXPECT_EQ(bench.Send(GetParam().command), GetParam().understood) << GetParam().command;
  if (GetParam().answer) {
    EXPECT_EQ(bench.Ask(GetParam().query), GetParam().answer);
  }
}

constexpr char kRange1[] = ":CHANNEL1:RANGE:?";
constexpr char kOffset2[] = ":CHANNEL2:OFFSET:?";
constexpr char kDelay[] = ":TimeBase:TRIGGER DELAY:?";

INSTANTIATE_TEST_SUITE_P(
    Malformed, Vocabulary,
    testing::Values(
        WireCase{"", false}, WireCase{":", false}, WireCase{":?", false}, WireCase{"?", false},
        WireCase{"*idn?", false}, WireCase{"*IDN? ", false}, WireCase{" *IDN?", false},
        WireCase{":run", false}, WireCase{":RUN ", false}, WireCase{":KEY:MATH", false},
        WireCase{":KEY:", false}, WireCase{":KEY:LOCK", false},
        WireCase{":timebase:RANGE:?", false}, WireCase{":TimeBase:RANGE?", false},
        WireCase{":TimeBase:RANGE: ?", false}, WireCase{":TRIGGER:SOURCE:CH2", false},
        WireCase{":TRIGGER:Source:ch2", false}, WireCase{":DISPLAY:MENU STATUS:off", false},
        WireCase{":DATA:CHANNEL3", false}, WireCase{":DATA:channel1", false},
        WireCase{":CHANNEL1:RANGE:", false, kRange1, "1.00V"},
        WireCase{":CHANNEL1:RANGE:1V", false, kRange1, "1.00V"},
        WireCase{":CHANNEL1:RANGE:10.0V", false, kRange1, "1.00V"},
        WireCase{":CHANNEL1:RANGE: 2.00V", false, kRange1, "1.00V"},
        WireCase{":CHANNEL2:OFFSET:12.04div", false, kOffset2, "-3.00div"},
        WireCase{":CHANNEL2:OFFSET:0.02div", false, kOffset2, "-3.00div"},
        WireCase{":CHANNEL2:OFFSET:-0.00div", false, kOffset2, "-3.00div"},
        WireCase{":CHANNEL2:OFFSET:4div", false, kOffset2, "-3.00div"},
        WireCase{":TRIGGER:SYNC:LINE", false, ":TRIGGER:SYNC:?", "ALL LINE"},
        WireCase{":TRIGGER:VIDEO STANDARD:", false, ":TRIGGER:VIDEO STANDARD:?", "NTSC"},
        WireCase{":TRIGGER:LINE_NUM:526", false}, WireCase{":TRIGGER:LINE_NUM:0", false},
        WireCase{":TRIGGER:LINE_NUM:01", false}, WireCase{":ACQUIRE:INTENSITY:0%", false},
        WireCase{":ACQUIRE:INTENSITY:101%", false}, WireCase{":ACQUIRE:AVERAGES:3", false},
        WireCase{":TimeBase:Holdoff:-1ns", false}, WireCase{":TimeBase:Holdoff:1", false},
        WireCase{":TimeBase:Holdoff:1 us", false}, WireCase{":TimeBase:Holdoff:1e3ns", false},
        WireCase{":TimeBase:Holdoff:.5us", false}, WireCase{":TimeBase:Holdoff:us", false},
        WireCase{":TimeBase:Holdoff:11s", false, ":TimeBase:Holdoff:?", "100ns"},
        WireCase{":TimeBase:TRIGGER DELAY:-2.9ms", false, kDelay, "0.0000s"},
        WireCase{":TimeBase:TRIGGER DELAY:1.1s", false, kDelay, "0.0000s"},
        WireCase{":TimeBase:SCAN:ON", false, ":TimeBase:SCAN:?", "OFF"},
        WireCase{":DATA:WinMemSize:4000", false, ":DATA:WinMemSize:?", "600"}));

INSTANTIATE_TEST_SUITE_P(
    Understood, Vocabulary,
    testing::Values(
        WireCase{"*IDN?", true, "*IDN?", "TAVIK TECHNOLOGIES,TX-5102CA,S1009837,01.02.05"},
        WireCase{":DISPLAY:MENU STATUS:OFF", true}, WireCase{":KEY:LOCK:ENABLE", true},
        WireCase{":KEY:LOCK:DISABLE", true}, WireCase{":STOP", true, ":TRIGGER:STATUS:?", "STOP"},
        WireCase{":CHANNEL1:RANGE:5.00V", true, kRange1, "5.00V"},
        WireCase{":CHANNEL2:OFFSET:-12.00div", true, kOffset2, "-12.00div"},
        WireCase{":CHANNEL2:OFFSET:0.04div", true, kOffset2, "0.04div"},
        // A switch that can be thrown and does nothing.
        WireCase{":CHANNEL1:INVERT:ON", true, ":CHANNEL1:INVERT:?", "OFF"},
        WireCase{":CHANNEL1:PROBE:10X", true, kRange1, "10.0V"},
        WireCase{":CHANNEL1:PROBE:1000X", true, kRange1, "1kV"},
        WireCase{":CHANNEL1:PROBE:100X", true, ":CHANNEL2:PROBE:?", "100X"},
        WireCase{":CHANNEL2:PROBE:10X", true, ":CHANNEL2:RANGE:?", "10.0V"},
        WireCase{":CHANNEL2:PROBE:10X", true, ":CHANNEL2:PROBE:?", "1X"},
        WireCase{":TimeBase:TRIGGER DELAY:-2.8ms", true, kDelay, "-2.8ms"},
        WireCase{":TimeBase:TRIGGER DELAY:-140000.0ns", true, kDelay, "-140000.0ns"},
        WireCase{":TimeBase:TRIGGER DELAY:1s", true, kDelay, "1s"},
        WireCase{":TimeBase:Holdoff:0.0000s", true, ":TimeBase:Holdoff:?", "0.0000s"},
        WireCase{":TRIGGER:PULSE WIDTH:1.0us", true, ":TRIGGER:PULSE WIDTH:?", "1.0us"},
        WireCase{":TRIGGER:PULSE MODE:+LESS THAN", true}, WireCase{":TRIGGER:Source:AC", true},
        WireCase{":TRIGGER:SYNC:LINE Number", true, ":TRIGGER:SYNC:?", "LINE Number"},
        WireCase{":TRIGGER:VIDEO STANDARD:PAL/SECAM", true},
        WireCase{":ACQUIRE:INTENSITY:100%", true, ":ACQUIRE:INTENSITY:?", "100%"},
        WireCase{":KEY:Math", true}, WireCase{":KEY:TRIG%50", true}, WireCase{":KEY:FORCE", true},
        WireCase{":KEY:H_POS_DEC", true}, WireCase{":KEY:PROMPT_V", true},
        WireCase{":ForceTrig", true}, WireCase{":TRIG%50", true}, WireCase{":AUTO", true}));

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
      const bool frozen = path.ends_with(":INVERT") || path == ":CHANNEL2:PROBE";
      if (frozen || path == ":TimeBase:SCAN") continue;
      ++values;
      EXPECT_TRUE(bench.Send(path + ":" + std::string(value))) << path << value;
      EXPECT_EQ(bench.Ask(path + ":?"), value);
    }
  }
  // Two channels of 21, 33 time bases, and the rest of the front panel.
  EXPECT_EQ(values,
            21 + 17 + 33 + 2 + 3 + 4 + 2 + 3 + 4 + 2 + 4 + 2 + 6 + 2 + 4 + 8 + 2 + 2 + 2 + 3);
}

TEST(VocabularyTest, MainsAsASourceBelongsToEdgesAndStaysWhereItWas) {
  Bench bench;
  EXPECT_TRUE(bench.Send(":TRIGGER:Source:AC"));
  EXPECT_TRUE(bench.Send(":TRIGGER:METHOD:PULSE"));
  EXPECT_EQ(bench.Ask(":TRIGGER:Source:?"), "AC");
  EXPECT_FALSE(bench.Send(":TRIGGER:Source:AC"));
}

TEST(VocabularyTest, DelayAndLineFollowWhatLimitsThem) {
  Bench bench;
  bench.Send(":TimeBase:TRIGGER DELAY:-2.8ms");
  bench.Send(":TimeBase:RANGE:10.00us");
  EXPECT_EQ(bench.Ask(kDelay), "-140.0us");
  bench.Send(":TimeBase:RANGE:50.00ms");
  EXPECT_FALSE(bench.Send(":TimeBase:TRIGGER DELAY:0.31s"));
  EXPECT_TRUE(bench.Send(":TimeBase:TRIGGER DELAY:0.3s"));
  bench.Send(":TRIGGER:VIDEO STANDARD:PAL/SECAM");
  EXPECT_TRUE(bench.Send(":TRIGGER:LINE_NUM:625"));
  bench.Send(":TRIGGER:VIDEO STANDARD:NTSC");
  EXPECT_EQ(bench.Ask(":TRIGGER:LINE_NUM:?"), "525");
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

#include <gtest/gtest.h>

#include <set>

#include "simulator/InstrumentBench.h"

namespace oriolemark {
namespace {

TEST(FrontKeysTest, AKeyChangesItsSettingWithinItsLimits) {
  // Commands before, the keys, a query, and its answers before and after.
  for (const auto& row : Rows(R"(
:TimeBase:RANGE:5.000ms | AUTO | :TimeBase:RANGE | 5.000ms | 200.0us
:KEY:CH2 | CH_OFF | :CHANNEL2:DISPLAY | ON | OFF
:CHANNEL2:DISPLAY:OFF | CH2 | :CHANNEL2:DISPLAY | OFF | ON
:CHANNEL1:DISPLAY:OFF | CH1 | :CHANNEL1:DISPLAY | OFF | ON
- | H_SCALE_DEC | :TimeBase:RANGE | 200.0us | 100.0us
:TimeBase:RANGE:1.000ns | H_SCALE_DEC | :TimeBase:RANGE | 1.000ns | 1.000ns
:TimeBase:RANGE:20.00s | H_SCALE_INC;H_SCALE_INC | :TimeBase:RANGE | 20.00s | 50.00s
- | H_POS_INC | :TimeBase:TRIGGER DELAY | 0.0000s | 20.00us
:TimeBase:TRIGGER DELAY:123.4ms | H_POS_DEC | :TimeBase:TRIGGER DELAY | 123.4ms | 123.38ms
:TimeBase:TRIGGER DELAY:-2.8ms | H_POS_DEC | :TimeBase:TRIGGER DELAY | -2.8ms | -2.8ms
:TimeBase:TRIGGER DELAY:-2.8ms | PROMPT_H | :TimeBase:TRIGGER DELAY | -2.8ms | 0.0000s
:KEY:CH2 | PROMPT_V | :CHANNEL2:OFFSET | -3.00div | 0.00div
- | V_POS_INC | :CHANNEL1:OFFSET | 2.00div | 2.20div
:KEY:CH2 | V_POS_DEC | :CHANNEL2:OFFSET | -3.00div | -3.20div
:CHANNEL1:OFFSET:11.92div | V_POS_INC | :CHANNEL1:OFFSET | 11.92div | 12.00div
:CHANNEL1:PROBE:1000X | V_SCALE_DEC | :CHANNEL1:RANGE | 1kV | 500V
:KEY:CH2 | V_SCALE_INC;V_SCALE_INC;V_SCALE_INC | :CHANNEL2:RANGE | 1.00V | 5.00V
- | TRIG_LVL_DEC | :TRIGGER:LEVEL | 0.00div | -0.20div
:TRIGGER:LEVEL:12.00div | TRIG_LVL_INC | :TRIGGER:LEVEL | 12.00div | 12.00div
:TRIGGER:Source:CH2 | TRIG%50 | :TRIGGER:LEVEL | 0.00div | 1.52div
- | RUN | :TRIGGER:STATUS | RUN | STOP
:TRIGGER:MODE:SINGLE;:STOP | RUN | :TRIGGER:STATUS | STOP | RUN
:TRIGGER:MODE:SINGLE;:TRIGGER:LEVEL:9.00div | FORCE | :TRIGGER:STATUS | RUN | STOP
)")) {
    Bench bench;
    EXPECT_TRUE(bench.Send(row[0])) << row[0];
    EXPECT_EQ(bench.Ask(row[2] + ":?"), row[3]) << row[1];
    for (const std::string& key : Split(row[1], ';')) EXPECT_TRUE(bench.Send(":KEY:" + key)) << key;
    EXPECT_EQ(bench.Ask(row[2] + ":?"), row[4]) << row[1];
  }
}

TEST(FrontKeysTest, AMenuKeyOpensItsOwnMenuAndClosesIt) {
  std::set<std::vector<std::uint8_t>> menus;
  const auto keys = Split(
      "ACQUIRE CH1 CH2 CURSOR DISPLAY Math MEASURE MNU_TIME MNU_TRIG REF STORAGE UTILITY", ' ');
  for (const std::string& key : keys) {
    Bench bench;
    const auto picture = [&](const std::string& commands) {
      EXPECT_TRUE(bench.Send(commands + ";:HARD_COPY")) << commands;
      return bench.instrument.ScreenMemory();
    };
    const std::string press = ":KEY:" + key;
    const auto closed = picture(press + ";:DISPLAY:MENU STATUS:OFF");
    const auto open = picture(press);
    EXPECT_TRUE(menus.insert(open).second) << key;
    EXPECT_EQ(picture(press), closed) << key;
    EXPECT_EQ(picture((key == "REF" ? ":KEY:Math;" : ":KEY:REF;") + press), open) << key;
  }
  EXPECT_EQ(menus.size(), keys.size());
}

TEST(FrontKeysTest, ASoftKeyStepsThroughTheValuesOfItsEntry) {
  // Commands before, the soft key, and a query with its answers after one press and after two.
  for (const auto& row : Rows(R"(
:KEY:MNU_TRIG | F1 | :TRIGGER:METHOD | PULSE | VIDEO
:TRIGGER:METHOD:PULSE;:KEY:MNU_TRIG | F3 | :TRIGGER:PULSE MODE | +MORE THAN | +EQUAL
:TRIGGER:METHOD:VIDEO;:KEY:MNU_TRIG | F5 | :TRIGGER:POLARITY | NEGATIVE | POSITIVE
:TRIGGER:Source:EXT5;:KEY:MNU_TRIG | F2 | :TRIGGER:Source | AC | CH1
:TRIGGER:Source:AC;:TRIGGER:METHOD:PULSE;:KEY:MNU_TRIG | F2 | :TRIGGER:Source | CH1 | CH2
:KEY:CH1;:KEY:CH2 | F2 | :CHANNEL2:INVERT | ON | OFF
:CHANNEL1:PROBE:1000X;:KEY:CH2;:KEY:CH1 | F4 | :CHANNEL1:RANGE | 1.00V | 10.0V
:ACQUIRE:INTENSITY:77%;:KEY:DISPLAY | F4 | :ACQUIRE:INTENSITY | 3% | 25%
:KEY:MNU_TIME | F5 | :TimeBase:RANGE | 100.0ms | 100.0ms
:TRIGGER:MODE:SINGLE;:STOP;:KEY:MNU_TRIG | F4 | :TRIGGER:STATUS | STOP | STOP
:KEY:CH2;:DISPLAY:MENU STATUS:OFF | F1 | :CHANNEL2:COUPLING | DC | AC
:KEY:STORAGE;:KEY:F2;:CHANNEL1:RANGE:5.00V | F3 | :CHANNEL1:RANGE | 1.00V | 1.00V
:KEY:STORAGE;:KEY:F2;:KEY:F1;:CHANNEL1:RANGE:5.00V | F3 | :CHANNEL1:RANGE | 5.00V | 5.00V
:KEY:STORAGE;:CHANNEL1:RANGE:5.00V | F4 | :CHANNEL1:RANGE | 1.00V | 1.00V
)")) {
    Bench bench;
    EXPECT_TRUE(bench.Send(row[0])) << row[0];
    for (const std::size_t answer : {3, 4}) {
      EXPECT_TRUE(bench.Send(":KEY:" + row[1])) << row[1];
      EXPECT_EQ(bench.Ask(row[2] + ":?"), row[answer]) << row[0];
    }
  }
}

}  // namespace
}  // namespace oriolemark

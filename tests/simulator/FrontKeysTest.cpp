#include <gtest/gtest.h>

#include <set>

#include "simulator/InstrumentBench.h"

namespace oriolemark {
namespace {

TEST(FrontKeysTest, AKeyChangesItsSettingWithinItsLimitsAndASoftKeyThatOfItsEntry) {
  // Commands before, a query, and keys with the answer behind each.
  for (const auto& row : Rows(R"(
:TimeBase:RANGE:5.000ms | :TimeBase:RANGE | AUTO=200.0us;H_SCALE_DEC=100.0us
:KEY:CH2 | :CHANNEL2:DISPLAY | CH_OFF=OFF;CH2=ON || - | :TimeBase:TRIGGER DELAY | H_POS_INC=20.00us
:CHANNEL1:DISPLAY:OFF | :CHANNEL1:DISPLAY | CH1=ON || - | :CHANNEL1:OFFSET | V_POS_INC=2.20div
:TimeBase:RANGE:1.000ns | :TimeBase:RANGE | H_SCALE_DEC=1.000ns || - | :TRIGGER:STATUS | RUN=STOP
:TimeBase:RANGE:20.00s | :TimeBase:RANGE | H_SCALE_INC=50.00s;H_SCALE_INC=50.00s
:TimeBase:TRIGGER DELAY:123.4ms | :TimeBase:TRIGGER DELAY | H_POS_DEC=123.38ms
:TimeBase:TRIGGER DELAY:-2.8ms | :TimeBase:TRIGGER DELAY | H_POS_DEC=-2.8ms;PROMPT_H=0.0000s
:KEY:CH2 | :CHANNEL2:OFFSET | V_POS_DEC=-3.20div;PROMPT_V=0.00div
:CHANNEL1:OFFSET:11.92div | :CHANNEL1:OFFSET | V_POS_INC=12.00div
:CHANNEL1:PROBE:1000X | :CHANNEL1:RANGE | V_SCALE_DEC=500V
:KEY:CH2 | :CHANNEL2:RANGE | V_SCALE_INC=2.00V;V_SCALE_INC=5.00V;V_SCALE_INC=5.00V
:TRIGGER:LEVEL:12.00div | :TRIGGER:LEVEL | TRIG_LVL_INC=12.00div;TRIG_LVL_DEC=11.80div
:TRIGGER:Source:CH2 | :TRIGGER:LEVEL | TRIG%50=1.52div
:TRIGGER:MODE:SINGLE;:STOP | :TRIGGER:STATUS | RUN=RUN
:TRIGGER:MODE:SINGLE;:TRIGGER:LEVEL:9.00div | :TRIGGER:STATUS | FORCE=STOP
:KEY:MNU_TRIG | :TRIGGER:METHOD | F1=PULSE;F1=VIDEO
:TRIGGER:METHOD:PULSE;:KEY:MNU_TRIG | :TRIGGER:PULSE MODE | F3=+MORE THAN;F3=+EQUAL
:TRIGGER:METHOD:VIDEO;:KEY:MNU_TRIG | :TRIGGER:POLARITY | F5=NEGATIVE;F5=POSITIVE
:TRIGGER:Source:EXT5;:KEY:MNU_TRIG | :TRIGGER:Source | F2=AC;F2=CH1
:TRIGGER:Source:AC;:TRIGGER:METHOD:PULSE;:KEY:MNU_TRIG | :TRIGGER:Source | F2=CH1;F2=CH2
:KEY:CH1;:KEY:CH2 | :CHANNEL2:INVERT | F2=ON;F2=OFF
:CHANNEL1:PROBE:1000X;:KEY:CH2;:KEY:CH1 | :CHANNEL1:RANGE | F4=1.00V;F4=10.0V
:ACQUIRE:INTENSITY:77%;:KEY:DISPLAY | :ACQUIRE:INTENSITY | F4=3%;F4=25%
:KEY:MNU_TIME | :TimeBase:RANGE | F5=100.0ms;F5=100.0ms
:TRIGGER:MODE:SINGLE;:STOP;:KEY:MNU_TRIG | :TRIGGER:STATUS | F4=STOP
:KEY:CH2;:DISPLAY:MENU STATUS:OFF | :CHANNEL2:COUPLING | F1=DC;F1=AC
:KEY:STORAGE;:KEY:F2;:CHANNEL1:RANGE:5.00V | :CHANNEL1:RANGE | F3=1.00V
:KEY:STORAGE;:KEY:F2;:KEY:F1;:CHANNEL1:RANGE:5.00V | :CHANNEL1:RANGE | F3=5.00V
:KEY:STORAGE;:CHANNEL1:RANGE:5.00V | :CHANNEL1:RANGE | F4=1.00V
)")) {
    Bench bench;
    EXPECT_TRUE(bench.Send(row[0])) << row[0];
    for (const std::string& press : Split(row[2], ';')) {
      const auto step = Split(press, '=');
      EXPECT_TRUE(bench.Send(":KEY:" + step[0])) << press;
      EXPECT_EQ(bench.Ask(row[1] + ":?"), step[1]) << row[0] << press;
    }
  }
}

TEST(FrontKeysTest, AMenuKeyOpensItsOwnMenuAndClosesIt) {
  std::set<std::vector<std::uint8_t>> menus;
  for (const std::string& key :
       Split("ACQUIRE CH1 CH2 CURSOR DISPLAY Math MEASURE MNU_TIME MNU_TRIG REF STORAGE UTILITY",
             ' ')) {
    Bench bench;
    const auto picture = [&](const std::string& commands) {
      const auto before = bench.instrument.ScreenMemory();
      EXPECT_TRUE(bench.Send(commands)) << commands;
      EXPECT_EQ(bench.instrument.ScreenMemory(), before) << "it holds until the next copy";
      bench.Send(":HARD_COPY");
      return bench.instrument.ScreenMemory();
    };
    const std::string press = ":KEY:" + key;
    const auto closed = picture(press + ";:DISPLAY:MENU STATUS:OFF");
    const auto open = picture(press);
    EXPECT_TRUE(menus.insert(open).second) << key;
    EXPECT_EQ(picture(press), closed) << key;
    EXPECT_EQ(picture((key == "REF" ? ":KEY:Math;" : ":KEY:REF;") + press), open) << key;
  }
}

}  // namespace
}  // namespace oriolemark

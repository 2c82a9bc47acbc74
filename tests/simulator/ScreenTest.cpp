#include <gtest/gtest.h>

#include "simulator/InstrumentBench.h"
#include "simulator/Screen.h"

namespace oriolemark {
namespace {

struct Screen : Bench {
  int InkAt(int x, int y) {
    return instrument.ScreenMemory()[static_cast<std::size_t>(y * tx5000::kScreenWidth + x)];
  }
  bool IsNear(int x, int y, int ink) {
    return InkAt(x, y - 1) == ink || InkAt(x, y) == ink || InkAt(x, y + 1) == ink;
  }
};

TEST(ScreenTest, ATraceLiesWhereABlockPutsItsSamples) {
  for (const auto& row : Rows(R"(
:CHANNEL1 | :KEY:CH1
:CHANNEL1 | :KEY:V_SCALE_DEC;:KEY:V_SCALE_DEC;:KEY:V_POS_DEC;:KEY:TRIG_LVL_INC
:CHANNEL1 | :KEY:H_SCALE_DEC;:KEY:H_SCALE_DEC;:KEY:H_POS_INC;:KEY:H_POS_INC;:DISPLAY:TYPE:DOT
:CHANNEL2 | :KEY:CH1;:KEY:CH_OFF;:KEY:CH2;:KEY:V_SCALE_INC;:KEY:V_POS_INC;:KEY:H_SCALE_INC
:CHANNEL2 | :KEY:CH1;:KEY:CH_OFF;:CHANNEL2:INVERT:ON;:CHANNEL2:PROBE:10X;:KEY:TRIG%50
)")) {
    Screen screen;
    EXPECT_TRUE(screen.Send(row[1] + ";:DISPLAY:MENU STATUS:OFF;:HARD_COPY")) << row[1];
    const int ink = row[0] == ":CHANNEL1" ? tx5000::kChannel1Ink : tx5000::kChannel2Ink;
    const auto samples = screen.Read(":DATA" + row[0]);
    int off = 0;
    for (int i = 0; i < 600; ++i) {
      const int sample = std::clamp(samples.at(static_cast<std::size_t>(i)), 26, 225);
      off += screen.IsNear(10 + i / 2, 19 + sample - 26, ink) ? 0 : 1;
    }
    EXPECT_EQ(off, 0) << row[1];
    // Nothing is lit above the highest sample.
    const int top = 19 + std::max(26, *std::ranges::min_element(samples)) - 26;
    for (int i = 0; i < 300 * (top - 20); ++i)
      off += screen.InkAt(10 + i % 300, 19 + i / 300) == ink;
    EXPECT_EQ(off, 0) << row[1];
  }
}

TEST(ScreenTest, MarksAreWhereTheirSettingsPutThem) {
  // Commands, then one dot: its ink in hexadecimal, column and row.
  for (const auto& row : Rows(R"(
:CHANNEL1:OFFSET:-1.00div | FC | 8 | 143
:CHANNEL2:OFFSET:-12.00div | 1F | 8 | 218
:CHANNEL2:DISPLAY:OFF | 0 | 8 | 193
:TimeBase:TRIGGER DELAY:200.0us | F0 | 135 | 17
:TimeBase:TRIGGER DELAY:0.5s | F0 | 10 | 17
:TRIGGER:LEVEL:-1.00div;:DISPLAY:MENU STATUS:OFF | F0 | 314 | 93
:TRIGGER:LEVEL:-1.00div;:DISPLAY:MENU STATUS:ON | F0 | 246 | 93
:TRIGGER:LEVEL:0.52div;:TRIGGER:Source:CH2;:DISPLAY:MENU STATUS:OFF | F0 | 314 | 180
:TRIGGER:METHOD:VIDEO;:DISPLAY:MENU STATUS:OFF | 0 | 314 | 68
:KEY:CURSOR;:KEY:F1 | 1C | 14 | 168 || :KEY:CURSOR;:KEY:F1;:KEY:F3 | 1C | 14 | 143
:KEY:CURSOR;:KEY:F1;:KEY:F1 | 1C | 110 | 19 || :KEY:CURSOR;:KEY:F1;:KEY:F1;:KEY:F1 | 0 | 110 | 19
:KEY:Math;:KEY:F1;:CHANNEL1:RANGE:2.00V;:CHANNEL2:RANGE:5.00V | E3 | 185 | 62
:KEY:Math;:KEY:F1;:KEY:F1 | E3 | 185 | 155
:KEY:REF;:KEY:F2;:KEY:F3;:KEY:V_POS_DEC | 92 | 185 | 30
)")) {
    Screen screen;
    EXPECT_TRUE(screen.Send(row[0] + ";:HARD_COPY")) << row[0];
    EXPECT_EQ(screen.InkAt(std::stoi(row[2]), std::stoi(row[3])), std::stoi(row[1], nullptr, 16))
        << row[0];
  }
}

TEST(ScreenTest, TheMeasureMenuFollowsTheSignal) {
  // The looks of Vpp and Freq, which are its second and third entry of 40 rows each.
  std::vector<std::vector<int>> looks;
  for (const char* const signal : {"sine 1000 1", "sine 1000 1.5", "sine 2000 1"}) {
    Screen screen;
    screen.instrument.Turn("SIGNAL1", signal);
    screen.Send(":KEY:MEASURE;:HARD_COPY");
    for (int entry = 0; entry < 2; ++entry) {
      auto& inks = looks.emplace_back();
      for (int i = 0; i < 40 * 60; ++i) {
        inks.push_back(screen.InkAt(tx5000::kMenuLeft + i % 60, 59 + 40 * entry + i / 60));
      }
    }
  }
  EXPECT_EQ(Bits(looks[0] == looks[2], looks[1] == looks[3]), "01");
  EXPECT_EQ(Bits(looks[0] == looks[4], looks[1] == looks[5]), "10");
}

}  // namespace
}  // namespace oriolemark

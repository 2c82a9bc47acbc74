#include <gtest/gtest.h>

#include "simulator/InstrumentBench.h"
#include "simulator/SerialSide.h"

namespace {

using namespace std::literals;

using oriolemark::Bench;
using oriolemark::Split;

// The first one is empty.
constexpr char kMalformed[] =
    ";:;?;*idn?;*IDN? ; *IDN?;:RUN ;:KEY:;:KEY:MATH;:KEY:f1;:TimeBase:RANGE?;:TimeBase:RANGE: "
    "?;:DATA:CHANNEL3;"
    ":TRIGGER:SOURCE:CH2;:CHANNEL1:RANGE:;:CHANNEL1:RANGE:10.0V;:CHANNEL1:RANGE: 2.00V;"
    ":CHANNEL2:OFFSET:12.04div;:CHANNEL2:OFFSET:0.02div;:CHANNEL2:OFFSET:4div;"
    ":TRIGGER:LINE_NUM:526;:TRIGGER:LINE_NUM:0;:TRIGGER:LINE_NUM:01;:ACQUIRE:INTENSITY:101%;"
    ":MEASURE:VPP;:MEASURE:Vpp:?;:MEASURE: Vpp;:MEASURE:;:MEASURE:CURRENT_SRC:ch2;"
    ":TimeBase:Holdoff:11s;:TimeBase:TRIGGER DELAY:-2.9ms;:TimeBase:TRIGGER DELAY:1.1s";

TEST(VocabularyTest, AMalformedCommandIsNotUnderstood) {
  Bench bench;
  int wrong = 0;
  for (const std::string& command : Split(kMalformed, ';')) {
    EXPECT_EQ(bench.Ask(command), "(no reply)") << command;
    EXPECT_EQ(bench.instrument.UnknownCommands(), ++wrong) << command;
  }
  EXPECT_TRUE(bench.Send(":TimeBase:RANGE:50.00ms;:TRIGGER:METHOD:PULSE"));
  EXPECT_FALSE(bench.Send(":TimeBase:TRIGGER DELAY:0.31s"));
  EXPECT_FALSE(bench.Send(":TRIGGER:Source:AC"));
}

TEST(VocabularyTest, AWellFormedCommandIsUnderstood) {
  EXPECT_TRUE(Bench().Send(":DISPLAY:MENU STATUS:OFF;:KEY:LOCK:ENABLE;:KEY:Math;:TRIG%50;:AUTO"));
  // The command, a query asked afterwards, and its answer. Delay and line follow what limits them.
  for (const auto& row : oriolemark::Rows(R"(
:CHANNEL2:OFFSET:-12.00div | :CHANNEL2:OFFSET:? | -12.00div
:TimeBase:TRIGGER DELAY:-140000.0ns | :TimeBase:TRIGGER DELAY:? | -140000.0ns
:TimeBase:TRIGGER DELAY:-2.8ms;:TimeBase:RANGE:10.00us | :TimeBase:TRIGGER DELAY:? | -140.0us
:TRIGGER:VIDEO STANDARD:PAL/SECAM;:TRIGGER:LINE_NUM:625;:TRIGGER:VIDEO STANDARD:NTSC
  | :TRIGGER:LINE_NUM:? | 525
)")) {
    Bench bench;
    EXPECT_TRUE(bench.Send(row[0])) << row[0];
    EXPECT_EQ(bench.Ask(row[1]), row[2]) << row[0];
  }
}

TEST(SamplesTest, ATraceStandsWhereItsSettingsPutItsSignal) {
  // The signal, the settings, and two samples at their places: at the top and the bottom, or just
  // before and behind the trigger point.
  for (const auto& row : oriolemark::Rows(R"(
sine 1250 2 | :CHANNEL1:RANGE:1.00V;:CHANNEL1:OFFSET:0.00div;:TRIGGER:LEVEL:0.00div
  | 350 | 75 | 250 | 175
sine 1250 0.004 | :CHANNEL1:OFFSET:2.00div;:CHANNEL1:PROBE:1000X;:CHANNEL1:RANGE:2.00V
  | 350 | 25 | 250 | 125
sine 1000 0 | :CHANNEL1:OFFSET:12.00div | 290 | 0 | 310 | 0
sine 1000 0 | :CHANNEL1:OFFSET:-12.00div | 290 | 255 | 310 | 255
sine 1000 1.6 | :CHANNEL1:OFFSET:1.00div;:TRIGGER:SLOPE:FALLING | 290 | 90.1 | 310 | 109.9
sine 1000 1.6 | :CHANNEL1:OFFSET:1.00div;:TimeBase:TRIGGER DELAY:-400.0us;:TRIGGER:LEVEL:1.00div
  | 390 | 83.6 | 410 | 68
)")) {
    Bench bench;
    ASSERT_TRUE(bench.instrument.Turn("SIGNAL1", row[0]));
    ASSERT_TRUE(bench.Send(row[1])) << row[1];
    const auto samples = bench.Read(":DATA:CHANNEL1");
    ASSERT_EQ(samples.size(), 600u);
    for (const std::size_t i : {2, 4}) {
      EXPECT_NEAR(samples.at(std::stoul(row[i])), std::stod(row[i + 1]), 1.5) << row[1];
    }
  }
}

TEST(SamplesTest, ARollingRecordMovesOnAtThePaceOfItsTimeBase) {
  Bench bench;
  EXPECT_TRUE(bench.instrument.Turn(":TimeBase:SCAN", "ON"));
  bench.instrument.Advance(2700ms);  // two passes of 1.2 s and a quarter of the third
  EXPECT_EQ(bench.Ask(":DATA:RollingStartPos:?"), "75");
  for (const char* const size : {"0", "17001", "17000"}) {
    EXPECT_EQ(bench.instrument.Turn(":DATA:WinMemSize", size), size == "17000"s);
  }
  EXPECT_EQ(bench.Read(":DATA:CHANNEL1").size(), 17000u);
}

TEST(MeasuresTest, ALimitOrAsterisksReplaceAValueThatCannotBeMeasured) {
  // The beginnings of the replies.
  for (const auto& row : oriolemark::Rows(R"(
sine 1000 9 | :RUN | Vpp>7.960V;Vmax>3.960V;Vmin<-4.000V;Vavg ****;Vovr ****;Freq=1.00
sine 1000 9 | :CHANNEL1:OFFSET:12.00div;:CHANNEL1:RANGE:5.00V | Vmin>-40.20V;Vbase>;Vpp>0.000mV
square 1000 | :TimeBase:RANGE:20.00us | Period>12;Freq<8;+Width ****;-Duty ****;RiseTime=1
square 1000 | :TimeBase:RANGE:20.00us;:TimeBase:TRIGGER DELAY:250.0us | Period ****;FallTime ****
sine 100000 | :RUN | Freq>83.33kHz;Period<12.00us;+Duty ****;+Width=
ramp 1000 | :RUN | FallTime<4.000us;RiseTime=8
burst 1000 | :RUN | Freq=10.0;Vtop=1.5
sine 1000 0 | :RUN | Vpp=0.000mV;Vavg=0.000mV;Freq ****;Vpre ****
sine 1000 1 | :CHANNEL1:DISPLAY:OFF | Vpp ****;Freq ****;+Duty ****
sine 1000 1 | :CHANNEL1:DISPLAY:OFF;:MEASURE:CURRENT_SRC:CH2 | Vpp=3.0;Vmin=0.0
)")) {
    Bench bench;
    bench.instrument.Turn("SIGNAL1", row[0]);
    bench.Send(":CHANNEL1:RANGE:1.00V;:CHANNEL1:OFFSET:0.00div;:TRIGGER:LEVEL:0.00div");
    EXPECT_TRUE(bench.Send(row[1])) << row[1];
    for (const std::string& start : Split(row[2], ';')) {
      const std::string reply =
          bench.Ask(":MEASURE:" + start.substr(0, start.find_first_of("=<> ")));
      EXPECT_EQ(reply.substr(0, start.size()), start) << row[0] << reply;
    }
  }
}

struct Line : Bench {
  tx5000::SerialSide side{instrument};

  std::string Receive(std::string_view bytes) {
    std::string all;
    for (const auto& chunk : side.Receive(bytes)) all += chunk.bytes;
    return all;
  }
  void Break(std::string_view fault) { side.GetFaults().Add(tx5000::ParseFault(fault).value()); }
};

TEST(SerialSideTest, ACommandEndsAtItsReturnAndNonsenseIsCountedAndKeptWithinBounds) {
  Line line;
  for (const char* const part : {":TimeBase:RAN", "GE:?"}) EXPECT_EQ(line.Receive(part), "");
  EXPECT_EQ(line.Receive("\r"), "200.0us\n");
  EXPECT_EQ(line.Receive(":STOP\r:TRIGGER:STATUS:?\r:RUN\r"), "STOP\n");
  EXPECT_EQ(line.Receive("\r"), "");
  EXPECT_EQ(line.Receive("\n*IDN?\r"), "") << "a line feed is part of what follows it";
  EXPECT_EQ(line.instrument.UnknownCommands(), 2);
  for (int i = 0; i < 100; ++i) line.Receive(std::string(1000, 'x'));
  EXPECT_EQ(line.Receive("\r"), "");
  EXPECT_LT(line.instrument.Unknown().back().size(), 300u);
  for (int i = 0; i < 250; ++i) line.Receive(":NONSENSE\r");
  EXPECT_EQ(line.instrument.Unknown().size(), 100u);
}

// Of a block of two samples, or of the reply to another query.
TEST(SerialSideTest, EachFaultSpoilsAReplyInItsOwnWay) {
  for (const auto& text : {"silence;"s, "cut;0xFF \n"s, "double;0xFF 0xFF \n0xFF 0xFF \n"s,
                           "no-lf;0xFF 0xFF "s, "die;0xFF "s, "vanish;"s, "nul;0xF\0F 0\0xFF\0 \n"s,
                           "wide-tokens;0x00FF 0x00FF \n"s, "equal-stars;Vpp=****\n;:MEASURE:Vpp"s,
                           "equal-stars;2\n;:DATA:WinMemSize:?"s, "no-value;Freq=\n;:MEASURE:Freq"s,
                           "no-name;0.000mV\n;:MEASURE:Vpp"s, "empty;\n;:MEASURE:Vpp"s}) {
    const auto row = Split(text, ';');
    Line line;
    line.instrument.Turn(":DATA:WinMemSize", "2");
    line.instrument.Turn("SIGNAL1", "sine 1000 0");
    line.instrument.Turn(":CHANNEL1:OFFSET", "-12.00div");
    line.Break(row[0] + " next");
    const std::string command = row.size() > 2 ? row[2] : ":DATA:CHANNEL1";
    EXPECT_EQ(line.Receive(command + "\r"), row[1]) << row[0];
  }
}

TEST(SerialSideTest, AFaultHitsWhatItsScopeNames) {
  Line line;
  line.Break("silence for *IDN?");
  EXPECT_EQ(line.Receive("*IDN?\r:DATA:WinMemSize:?\r"), "600\n");
  line.Break("silence next");
  EXPECT_EQ(line.Receive(":STOP\r"), "");
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "") << "a command without reply uses up nothing";
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "600\n");
}

}  // namespace

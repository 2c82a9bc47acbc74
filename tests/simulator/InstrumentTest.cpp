#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "simulator/SerialSide.h"
#include "support/Tables.h"

namespace {

using namespace std::literals;

using oriolemark::Split;

// An instrument on the bench, spoken to in its own words.
struct Bench {
  tx5000::Instrument instrument;

  std::string Ask(std::string_view command) {
    return instrument.Execute(command).value_or("(no reply)");
  }

  // Commands with ';' between them, without replies; whether each was understood.
  bool Send(std::string_view commands) {
    const int before = instrument.UnknownCommands();
    for (const std::string& command : Split(commands, ';')) instrument.Execute(command);
    return instrument.UnknownCommands() == before;
  }

  // The samples of a block, read as the last two characters of each token.
  std::vector<int> Read(std::string_view command) {
    const std::string text = Ask(command);
    std::vector<int> samples;
    for (std::size_t i = 2; i + 2 < text.size(); i += 5) {
      samples.push_back(std::stoi(text.substr(i, 2), nullptr, 16));
    }
    return samples;
  }
};

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
  int wrong = 0;
  for (const std::string& command : Split(kMalformed, ';')) {
    EXPECT_EQ(bench.Ask(command), "(no reply)") << command;
    EXPECT_EQ(bench.instrument.UnknownCommands(), ++wrong) << command;
    EXPECT_EQ(SettingsOf(bench), before) << command;
  }
  EXPECT_TRUE(bench.Send(":TimeBase:RANGE:50.00ms;:TRIGGER:METHOD:PULSE"));
  EXPECT_FALSE(bench.Send(":TimeBase:TRIGGER DELAY:0.31s"));
  EXPECT_FALSE(bench.Send(":TRIGGER:Source:AC"));
}

TEST(VocabularyTest, AWellFormedCommandIsUnderstood) {
  constexpr char kSilent[] =
      ":DISPLAY:MENU STATUS:OFF;:KEY:LOCK:ENABLE;:KEY:LOCK:DISABLE;:KEY:Math;:KEY:TRIG%50;"
      ":KEY:FORCE;:KEY:H_POS_DEC;:KEY:PROMPT_V;:ForceTrig;:TRIG%50;:AUTO";
  EXPECT_TRUE(Bench().Send(kSilent));
  // The command, a query asked afterwards, and its answer. Delay and line follow what limits them;
  // mains stays, though it belongs to edges.
  for (const auto& row : oriolemark::Rows(R"(
*IDN? | *IDN? | TAVIK TECHNOLOGIES,TX-5102CA,S1009837,01.02.05
:CHANNEL2:OFFSET:-12.00div | :CHANNEL2:OFFSET:? | -12.00div
:CHANNEL2:OFFSET:0.04div | :CHANNEL2:OFFSET:? | 0.04div
:CHANNEL1:INVERT:ON | :CHANNEL1:INVERT:? | ON || :CHANNEL1:PROBE:1000X | :CHANNEL1:RANGE:? | 1kV
:TimeBase:TRIGGER DELAY:-140000.0ns | :TimeBase:TRIGGER DELAY:? | -140000.0ns
:TimeBase:TRIGGER DELAY:1s | :TimeBase:TRIGGER DELAY:? | 1s
:ACQUIRE:INTENSITY:100% | :ACQUIRE:INTENSITY:? | 100%
:TimeBase:TRIGGER DELAY:-2.8ms;:TimeBase:RANGE:10.00us | :TimeBase:TRIGGER DELAY:? | -140.0us
:TimeBase:RANGE:50.00ms;:TimeBase:TRIGGER DELAY:0.3s | :TimeBase:TRIGGER DELAY:? | 0.3s
:TRIGGER:VIDEO STANDARD:PAL/SECAM;:TRIGGER:LINE_NUM:625;:TRIGGER:VIDEO STANDARD:NTSC
  | :TRIGGER:LINE_NUM:? | 525
:TRIGGER:Source:AC;:TRIGGER:METHOD:PULSE | :TRIGGER:Source:? | AC
:KEY:V_SCALE_INC | :CHANNEL1:RANGE:? | 2.00V || :KEY:CH_OFF | :CHANNEL1:DISPLAY:? | OFF
:KEY:CH2;:KEY:V_POS_DEC | :CHANNEL2:OFFSET:? | -3.20div
:CHANNEL1:OFFSET:12.00div;:KEY:V_POS_INC | :CHANNEL1:OFFSET:? | 12.00div
:KEY:H_SCALE_DEC;:KEY:H_POS_DEC | :TimeBase:TRIGGER DELAY:? | -10.00us
:TimeBase:RANGE:50.00s;:KEY:H_SCALE_INC | :TimeBase:RANGE:? | 50.00s
:KEY:TRIG_LVL_INC | :TRIGGER:LEVEL:? | 0.20div
)")) {
    Bench bench;
    EXPECT_TRUE(bench.Send(row[0])) << row[0];
    EXPECT_EQ(bench.Ask(row[1]), row[2]) << row[0];
  }
}

TEST(VocabularyTest, AHandReachesWhatTheWireCanOnlyAsk) {
  Bench bench;
  for (const auto& row : oriolemark::Rows(R"(
:DATA:WinMemSize | 0 || :DATA:WinMemSize | 17001 || :CHANNEL1:RANGE | 3.00V || SIGNAL3 | sine
SIGNAL1 | sine 0 || SIGNAL1 | sine 1000 1 1
)")) {
    EXPECT_FALSE(bench.instrument.Turn(row[0], row[1])) << row[0] << row[1];
  }
  EXPECT_EQ(bench.instrument.UnknownCommands(), 0) << "a slip of the hand is no wrong command";
  for (const auto& row : {std::pair(":DATA:WinMemSize", "17000"), {":KEY:RUN", ""}}) {
    EXPECT_TRUE(bench.instrument.Turn(row.first, row.second)) << row.first;
  }
  EXPECT_EQ(bench.Read(":DATA:CHANNEL1").size(), 17000u);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP");
}

// Channel, probe, range, offset, time base, delay, slope, level; what all samples lie between; two
// of them, at the top and at the bottom or just before and behind the trigger point; the signal.
const char* const kTraces[] = {
    "1 1X 1.00V 0.00div 200.0us 0.0000s RISING 0.00div 75 175 350 75 250 175 sine 1250 2",
    "2 10X 10.0V -2.00div 1.000ms 0.0000s RISING 0.00div 135 215 325 135 275 215 sine 500 1.6",
    "1 1000X 2.00V 2.00div 50.00ms 0.0000s RISING 0.00div 25 125 325 25 275 125 sine 10 0.004",
    "2 100X 500V 0.00div 10.00us 0.0000s RISING 0.00div 100 150 350 100 250 150 sine 25000 5",
    "1 1X 1.00V 12.00div 200.0us 0.0000s RISING 0.00div 0 0 290 0 310 0 sine 1000 0",
    "1 1X 1.00V -12.00div 200.0us 0.0000s RISING 0.00div 255 255 290 255 310 255 sine 1000 0",
    "1 1X 1.00V 1.00div 200.0us 0.0000s RISING -1.20div 60 140 290 135.6 310 122.5 sine 1000 1.6",
    "1 1X 1.00V 1.00div 200.0us 0.0000s FALLING 0.00div 60 140 290 90.1 310 109.9 sine 1000 1.6",
    "1 1X 1.00V 1.00div 200.0us -400.0us RISING 1.00div 60 140 390 83.6 410 68 sine 1000 1.6",
    "1 1X 1.00V 1.00div 200.0us 600.0us FALLING 0.80div 60 140 140 72 160 89.2 sine 1000 1.6"};

TEST(SamplesTest, ATraceStandsWhereItsSettingsPutItsSignal) {
  for (const char* const row : kTraces) {
    SCOPED_TRACE(row);
    std::istringstream cells(row);
    std::string number, probe, range, offset, time, delay, slope, level, signal;
    cells >> number >> probe >> range >> offset >> time >> delay >> slope >> level;
    double top, bottom, at[2], sample[2];
    cells >> top >> bottom >> at[0] >> sample[0] >> at[1] >> sample[1] >> std::ws;
    std::getline(cells, signal);
    Bench bench;
    const std::string channel = ":CHANNEL" + number;
    ASSERT_TRUE(bench.instrument.Turn("SIGNAL" + number, signal));
    ASSERT_TRUE(bench.Send(channel + ":PROBE:" + probe + ";" + channel + ":RANGE:" + range + ";" +
                           channel + ":OFFSET:" + offset + ";:TimeBase:RANGE:" + time +
                           ";:TimeBase:TRIGGER DELAY:" + delay + ";:TRIGGER:SLOPE:" + slope +
                           ";:TRIGGER:LEVEL:" + level + ";:TRIGGER:Source:CH" + number));
    const auto samples = bench.Read(":DATA:CHANNEL" + number);
    ASSERT_EQ(samples.size(), 600u);
    const auto [lowest, highest] = std::ranges::minmax(samples);
    EXPECT_NEAR(lowest, top, 1);
    EXPECT_NEAR(highest, bottom, 1);
    for (const int i : {0, 1}) EXPECT_NEAR(samples.at(std::size_t(at[i])), sample[i], 1.5);
  }
}

TEST(SamplesTest, AnInvertedTraceIsTheMirrorOfItsSignal) {
  Bench bench;
  for (const char* input : {"SIGNAL1", "SIGNAL2"}) bench.instrument.Turn(input, "sine 1000 2");
  ASSERT_TRUE(
      bench.Send(":CHANNEL1:OFFSET:0.00div;:CHANNEL2:OFFSET:0.00div;"
                 ":CHANNEL2:INVERT:ON;:TRIGGER:Source:CH1"));
  const auto plain = bench.Read(":DATA:CHANNEL1");
  const auto inverted = bench.Read(":DATA:CHANNEL2");
  ASSERT_EQ(plain.size(), inverted.size());
  for (std::size_t i = 0; i < plain.size(); ++i) ASSERT_NEAR(plain[i] + inverted[i], 250, 4) << i;
}

TEST(SamplesTest, APictureStandsStillWhereTheTriggerFindsItsSignal) {
  constexpr int kAny = 255;
  // Signal and commands, and how many rows a sample moves between two readings, at least and at
  // most.
  const std::tuple<std::string, std::string, int, int> cases[] = {
      // Noise: seen, but no more than a row to either side.
      {"sine 1234", ":RUN", 1, 2},
      {"sine", ":TRIGGER:LEVEL:5.00div", 11, kAny},
      {"sine", ":TRIGGER:METHOD:VIDEO;:TRIGGER:MODE:NORMAL", 11, kAny},
      {"sine", ":TRIGGER:MODE:NORMAL;:TRIGGER:LEVEL:5.00div;:TRIG%50", 1, 2},
      {"sine", ":STOP", 0, 0},
      {"square", ":TRIGGER:PULSE WIDTH:500us;:TRIGGER:PULSE MODE:+EQUAL", 1, 2},
      {"square", ":TRIGGER:PULSE WIDTH:400us;:TRIGGER:PULSE MODE:-LESS THAN", 11, kAny},
      {"square", ":TRIGGER:PULSE WIDTH:400us;:TRIGGER:PULSE MODE:-MORE THAN", 1, 2},
  };
  for (const auto& [signal, commands, least, most] : cases) {
    SCOPED_TRACE(signal + commands);
    Bench bench;
    ASSERT_TRUE(bench.instrument.Turn("SIGNAL1", signal));
    if (signal == "square") bench.Send(":TRIGGER:METHOD:PULSE");
    ASSERT_TRUE(bench.Send(commands));
    const auto before = bench.Read(":DATA:CHANNEL1");
    int largest = 0;
    for (int i = 0; i < 3; ++i) {
      bench.instrument.Advance(137ms);
      const auto after = bench.Read(":DATA:CHANNEL1");
      for (std::size_t at = 0; at < before.size(); ++at) {
        largest = std::max(largest, std::abs(after.at(at) - before[at]));
      }
    }
    EXPECT_EQ(std::clamp(largest, least, most), largest);
  }
}

TEST(SamplesTest, ASingleShotIsArmedByTheKeyAndStopsAfterOneScreen) {
  Bench bench;
  const std::tuple<const char*, std::chrono::milliseconds, const char*> steps[] = {
      {":TimeBase:RANGE:20.00ms;:TRIGGER:MODE:SINGLE", 239ms, "RUN"},
      {"", 1ms, "STOP"},
      {":RUN", 0ms, "STOP"},                             // only the key arms
      {":TRIGGER:LEVEL:8.00div;:KEY:RUN", 100s, "RUN"},  // no trigger, no shot
      {":ForceTrig", 0ms, "STOP"}};
  for (const auto& [commands, wait, status] : steps) {
    bench.Send(commands);
    bench.instrument.Advance(wait);
    EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), status) << commands;
  }
}

TEST(SamplesTest, ARollingRecordIsWrittenOverAtThePaceOfItsTimeBase) {
  Bench bench;
  bench.instrument.Turn("SIGNAL1", "ramp 0.4");
  EXPECT_TRUE(bench.instrument.Turn(":TimeBase:SCAN", "ON"));
  bench.instrument.Advance(2700ms);  // two passes of 1.2 s and a quarter of the third
  EXPECT_EQ(bench.Ask(":DATA:RollingStartPos:?"), "75");
  const auto before = bench.Read(":DATA:CHANNEL1");
  bench.instrument.Advance(400ms);
  EXPECT_EQ(bench.Ask(":DATA:RollingStartPos:?"), "175");
  const auto after = bench.Read(":DATA:CHANNEL1");
  EXPECT_TRUE(std::equal(after.begin(), after.begin() + 150, before.begin()));
  EXPECT_TRUE(std::equal(after.begin() + 351, after.end(), before.begin() + 351, before.end()));
  EXPECT_GT(std::abs(after[250] - before[250]), 5);
  EXPECT_TRUE(bench.Send(":TimeBase:RANGE:1.000ms"));
  EXPECT_EQ(bench.Ask(":TimeBase:SCAN:?"), "OFF") << "fast time bases do not roll";
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

TEST(SerialSideTest, ACommandEndsAtItsReturnHoweverItComes) {
  Line line;
  EXPECT_EQ(line.Receive(":TimeBase:RAN"), "");
  EXPECT_EQ(line.Receive("GE:?"), "");
  EXPECT_EQ(line.Receive("\r"), "200.0us\n");
  EXPECT_EQ(line.Receive(":STOP\r:TRIGGER:STATUS:?\r:RUN\r"), "STOP\n");
  EXPECT_EQ(line.instrument.UnknownCommands(), 0);
  EXPECT_EQ(line.Receive("\r"), "");
  EXPECT_EQ(line.Receive("\n*IDN?\r"), "") << "a line feed is part of what follows it";
  EXPECT_EQ(line.instrument.UnknownCommands(), 2);
}

TEST(SerialSideTest, NonsenseIsCountedAndKeptWithinBounds) {
  Line line;
  for (int i = 0; i < 100; ++i) line.Receive(std::string(1000, 'x'));
  EXPECT_EQ(line.Receive("\r"), "");
  EXPECT_EQ(line.instrument.UnknownCommands(), 1);
  EXPECT_LT(line.instrument.Unknown().front().size(), 300u);
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "600\n");
  for (int i = 0; i < 250; ++i) line.Receive(":NONSENSE\r");
  EXPECT_EQ(line.instrument.Unknown().size(), 100u);
}

// Of a block of two samples.
TEST(SerialSideTest, EachFaultSpoilsAReplyInItsOwnWay) {
  for (const auto& text :
       {"silence;"s, "cut;0xFF \n"s, "double;0xFF 0xFF \n0xFF 0xFF \n"s, "no-lf;0xFF 0xFF "s,
        "die;0xFF "s, "vanish;"s, "nul;0xF\0F 0\0xFF\0 \n"s, "high;0xF\xE4\x46 0\xE4xFF\xE4 \n"s,
        "bare-tokens;FF FF \n"s, "wide-tokens;0x00FF 0x00FF \n"s, "comma-tokens;0xFF,0xFF,\n"s,
        "two-blanks;0xFF  0xFF  \n"s, "lower-tokens;0xff 0xff \n"s, "no-last-blank;0xFF 0xFF\n"s,
        "short-block;0xFF \n"s}) {
    const auto row = Split(text, ';');
    Line line;
    line.instrument.Turn(":DATA:WinMemSize", "2");
    line.instrument.Turn("SIGNAL1", "sine 1000 0");
    line.instrument.Turn(":CHANNEL1:OFFSET", "-12.00div");
    line.Break(row[0] + " next");
    EXPECT_EQ(line.Receive(":DATA:CHANNEL1\r"), row[1]) << row[0];
  }
}

TEST(SerialSideTest, AFaultHitsWhatItsScopeNames) {
  Line line;
  line.Break("silence for :DATA:WinMemSize:?");
  EXPECT_EQ(line.Receive("*IDN?\r:DATA:WinMemSize:?\r").size(), 47u);
  line.side.GetFaults().Clear();
  line.Break("silence next");
  EXPECT_EQ(line.Receive(":STOP\r"), "");
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "") << "a command without reply uses up nothing";
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "600\n");
  line.Break("delay 80");
  EXPECT_EQ(line.side.Receive("*IDN?\r").front().after, 80ms);
}

}  // namespace

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <tuple>

#include "Bench.h"
#include "simulator/Values.h"

namespace {

double Divisions(const std::string& text) {
  return *tx5000::ParseDivisions(text) / 100.0;
}

// How often a trace comes up through its middle, from a band below it.
int CountPeriods(const std::vector<int>& samples) {
  const double middle = (Lowest(samples) + Highest(samples)) / 2.0;
  const double band = (Highest(samples) - Lowest(samples)) / 8.0;
  int periods = 0;
  bool below = false;
  for (const int sample : samples) {
    periods += below && sample <= middle;
    below = sample > middle + band || (below && sample > middle);
  }
  return periods;
}

TEST(SamplesTest, TraceRangeOffsetAndSignalAgreeWithinOneRow) {
  using tx5000::Setting;
  std::mt19937 random(7);
  auto draw = [&](int count) { return static_cast<std::size_t>(random() % unsigned(count)); };
  for (int story = 0; story < 20; ++story) {
    SCOPED_TRACE(story);
    Bench bench;
    const auto& settings = bench.instrument.GetSettings();
    const auto channel = story % 2 == 0 ? tx5000::Channel::k1 : tx5000::Channel::k2;
    const std::string number = story % 2 == 0 ? "1" : "2";
    const std::string root = ":CHANNEL" + number;
    for (const Setting first :
         {Setting::kProbe1, Setting::kRange1, Setting::kCoupling1, Setting::kBandwidth1}) {
      const Setting setting = OfChannel(first, channel);
      const auto choices = settings.Choices(setting);
      EXPECT_TRUE(bench.Turn(tx5000::Settings::Path(setting),
                             choices[draw(static_cast<int>(choices.size()))]));
    }
    const auto times = settings.Choices(Setting::kTimeRange);
    ASSERT_TRUE(bench.Turn(":TimeBase:RANGE", times[6 + draw(20)]));
    ASSERT_TRUE(bench.Turn(root + ":OFFSET", tx5000::FormatDivisions(4 * int(draw(40)) - 80)));
    ASSERT_TRUE(bench.Turn(":TRIGGER:Source", "CH" + number));

    // What the wire tells of the scales, and a signal drawn to fit them.
    const double range = *tx5000::ParseVolts(bench.Ask(root + ":RANGE:?"));
    const double offset = Divisions(bench.Ask(root + ":OFFSET:?"));
    const double screen = 12 * *tx5000::ParseSeconds(bench.Ask(":TimeBase:RANGE:?"));
    const double height = 0.6 + 0.1 * double(draw(20));  // divisions from mean to peak
    const int periods = 3 + static_cast<int>(draw(4));
    bench.instrument.Connect(channel, {tx5000::SignalKind::kSine, periods / screen,
                                       height * range / settings.ProbeFactor(channel)});

    const auto samples = bench.Read(":DATA:CHANNEL" + number);
    ASSERT_EQ(samples.size(), 600u);
    EXPECT_NEAR(Lowest(samples), 125 - 25 * (offset + height), 1);
    EXPECT_NEAR(Highest(samples), 125 - 25 * (offset - height), 1);
    EXPECT_NEAR(CountPeriods(samples), periods, 1);
    // After a whole number of periods it is the same again.
    const std::size_t period = 600 / static_cast<std::size_t>(periods);
    EXPECT_NEAR(samples[100], samples[100 + period], 3);
  }
}

TEST(SamplesTest, ABlockIsTokensOfFourCharactersWithABlankBehindEach) {
  Bench bench;
  bench.Turn(":DATA:WinMemSize", "3");
  bench.Turn("SIGNAL1", "sine 1000 0");
  bench.Send(":CHANNEL1:OFFSET:-12.00div");
  EXPECT_EQ(bench.Ask(":DATA:CHANNEL1"), "0xFF 0xFF 0xFF ");
  bench.Send(":CHANNEL1:OFFSET:12.00div");
  EXPECT_EQ(bench.Ask(":DATA:CHANNEL1"), "0x00 0x00 0x00 ");
}

TEST(SamplesTest, TheTriggerPointStandsWhereDelayAndLevelPutIt) {
  // Delay, slope, level, and the index of the sample at the trigger point.
  const std::tuple<std::string, std::string, std::string, std::size_t> cases[] = {
      {"0.0000s", "RISING", "0.00div", 300},  {"0.0000s", "FALLING", "0.00div", 300},
      {"400.0us", "RISING", "0.00div", 200},  {"-400.0us", "RISING", "1.00div", 400},
      {"0.0000s", "RISING", "-1.20div", 300}, {"600.0us", "FALLING", "0.80div", 150},
  };
  for (const auto& [delay, slope, level, index] : cases) {
    SCOPED_TRACE(delay + slope + level);
    Bench bench;
    bench.Turn("SIGNAL1", "sine 1000 1.6");
    ASSERT_TRUE(bench.Send(":CHANNEL1:OFFSET:1.00div;:TimeBase:TRIGGER DELAY:" + delay +
                           ";:TRIGGER:SLOPE:" + slope + ";:TRIGGER:LEVEL:" + level));
    const auto samples = bench.Read(":DATA:CHANNEL1");
    EXPECT_NEAR(samples[index], 125 - 25 * (1 + Divisions(level)), 1.5);
    EXPECT_EQ(samples[index + 10] < samples[index - 10], slope == "RISING");
  }
}

TEST(SamplesTest, APictureStandsStillWhereTheTriggerFindsItsSignal) {
  constexpr int kAny = 255;
  // Signal and commands, and how many rows a sample moves between two readings, at least and at
  // most.
  const std::tuple<std::string, std::string, int, int> cases[] = {
      // Noise: seen, but no more than a row to either side.
      {"sine 1234", ":RUN", 1, 2},
      {"burst", ":RUN", 1, 2},
      {"sine", ":TRIGGER:LEVEL:5.00div", 11, kAny},
      {"sine", ":TRIGGER:Source:EXT", 11, kAny},
      {"sine", ":TRIGGER:METHOD:VIDEO;:TRIGGER:MODE:NORMAL", 11, kAny},
      {"sine", ":TRIGGER:MODE:NORMAL;:TRIGGER:LEVEL:5.00div", 0, 0},
      {"sine", ":TRIGGER:MODE:NORMAL;:TRIGGER:LEVEL:5.00div;:TRIG%50", 1, 2},
      {"sine", ":STOP", 0, 0},
      {"square", ":TRIGGER:PULSE WIDTH:500us;:TRIGGER:PULSE MODE:+EQUAL", 1, 2},
      {"square", ":TRIGGER:PULSE WIDTH:400us;:TRIGGER:PULSE MODE:-LESS THAN", 11, kAny},
      {"square", ":TRIGGER:PULSE WIDTH:400us;:TRIGGER:PULSE MODE:-MORE THAN", 1, 2},
  };
  for (const auto& [signal, commands, least, most] : cases) {
    SCOPED_TRACE(signal + commands);
    Bench bench;
    ASSERT_TRUE(bench.Turn("SIGNAL1", signal));
    if (signal == "square") bench.Send(":TRIGGER:METHOD:PULSE");
    ASSERT_TRUE(bench.Send(commands));
    const auto before = bench.Read(":DATA:CHANNEL1");
    int largest = 0;
    for (int i = 0; i < 3; ++i) {
      bench.Wait(137);
      largest = std::max(largest, LargestDifference(before, bench.Read(":DATA:CHANNEL1")));
    }
    EXPECT_TRUE(largest >= least && largest <= most) << largest;
  }
}

TEST(SamplesTest, AStoppedRecordOutlivesAChangeAtTheInput) {
  Bench bench;
  bench.Send(":STOP");
  const auto before = bench.Read(":DATA:CHANNEL1");
  bench.Turn("SIGNAL1", "square 3000 0.2");
  bench.Wait(1000);
  EXPECT_EQ(bench.Read(":DATA:CHANNEL1"), before);
  bench.Send(":RUN");
  EXPECT_NE(bench.Read(":DATA:CHANNEL1"), before);
}

TEST(SamplesTest, ASingleShotIsArmedByTheKeyAndStopsAfterOneScreen) {
  Bench bench;
  bench.Send(":TimeBase:RANGE:20.00ms;:TRIGGER:MODE:SINGLE");
  bench.Wait(239);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "RUN");
  bench.Wait(1);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP");
  EXPECT_TRUE(bench.Send(":RUN"));
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP") << "only the key arms";
  bench.Send(":TRIGGER:LEVEL:8.00div;:KEY:RUN");
  bench.Wait(100000);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "RUN") << "no trigger, no shot";
  bench.Send(":ForceTrig");
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP");
}

TEST(SamplesTest, CouplingTakesTheMeanAndAProbeLeavesThePicture) {
  Bench bench;
  const auto direct = bench.Read(":DATA:CHANNEL2");
  EXPECT_NEAR(Highest(direct), 200, 1) << "the low state stands on the channel's zero";
  bench.Send(":CHANNEL2:PROBE:100X");
  EXPECT_LE(LargestDifference(bench.Read(":DATA:CHANNEL2"), direct), 1);
  bench.Send(":CHANNEL2:COUPLING:AC");
  EXPECT_NEAR(Highest(bench.Read(":DATA:CHANNEL2")), 200 + 37.5, 1);
}

TEST(SamplesTest, AveragesQuietTheNoise) {
  Bench bench;
  bench.Turn("SIGNAL1", "noise 1000 2");
  auto spread = [&] {
    const auto samples = bench.Read(":DATA:CHANNEL1");
    return Highest(samples) - Lowest(samples);
  };
  const int loud = spread();
  bench.Send(":ACQUIRE:ACQUISITION:AVERAGE;:ACQUIRE:AVERAGES:4");
  EXPECT_NEAR(spread(), loud / 2.0, 2);
  bench.Send(":ACQUIRE:AVERAGES:256");
  EXPECT_NEAR(spread(), loud / 16.0, 2);
}

TEST(SamplesTest, AnEnvelopeHoldsEachTraceOfAModulatedSignal) {
  Bench bench;
  bench.Turn("SIGNAL1", "modulated");
  bench.Send(":ACQUIRE:ACQUISITION:ENVELOPE");
  const auto upper = bench.Read(":DATA:EnvelopeMax:CH1");
  const auto lower = bench.Read(":DATA:EnvelopeMin:CH1");
  int widest = 0;
  for (std::size_t i = 0; i < upper.size(); ++i) {
    ASSERT_LE(upper[i], lower[i]) << i;  // the larger voltage has the smaller byte
    widest = std::max(widest, lower[i] - upper[i]);
  }
  EXPECT_GT(widest, 25) << "a division at least, or nobody sees two traces";
  bench.Send(":ACQUIRE:ACQUISITION:NORMAL");
  for (int record = 0; record < 5; ++record) {
    bench.Wait(11);
    const auto plain = bench.Read(":DATA:CHANNEL1");
    for (std::size_t i = 0; i < plain.size(); ++i) {
      ASSERT_GE(plain[i], upper[i] - 6) << i;
      ASSERT_LE(plain[i], lower[i] + 6) << i;
    }
  }
}

TEST(SamplesTest, TheFigurePairDrawsTheSameClosedCurve) {
  Bench bench;
  bench.Turn("SIGNAL1", "lissajous");
  bench.Turn("SIGNAL2", "lissajous");
  bench.Send(":TimeBase:FORMAT:X-Y");
  const auto across = bench.Read(":DATA:CHANNEL1");
  bench.Wait(3210);  // a block on a slow line takes its time
  const auto up = bench.Read(":DATA:CHANNEL2");
  bench.Wait(77);
  EXPECT_LE(LargestDifference(bench.Read(":DATA:CHANNEL2"), up), 2);
  // Three to two: the pair repeats after 2 ms, 500 of the 600 samples.
  for (int i = 0; i < 100; ++i) {
    ASSERT_NEAR(across[i], across[i + 500], 2);
    ASSERT_NEAR(up[i], up[i + 500], 2);
  }
}

TEST(SamplesTest, ARollingRecordIsWrittenOverAtThePaceOfItsTimeBase) {
  Bench bench;
  bench.Turn("SIGNAL1", "ramp 0.4");
  EXPECT_TRUE(bench.Turn(":TimeBase:SCAN", "ON"));
  EXPECT_EQ(bench.Ask(":TimeBase:RANGE:?"), "100.0ms") << "fast time bases do not roll";
  bench.Wait(2700);  // two passes of 1.2 s and a quarter of the third
  EXPECT_EQ(bench.Ask(":DATA:RollingStartPos:?"), "75");
  const auto before = bench.Read(":DATA:CHANNEL1");
  bench.Wait(400);
  const int start = std::stoi(bench.Ask(":DATA:RollingStartPos:?"));
  const int width = std::stoi(bench.Ask(":DATA:RollingEraseWidth:?"));
  EXPECT_EQ(start, 175);
  EXPECT_GT(width, 0);
  const auto after = bench.Read(":DATA:CHANNEL1");
  for (int i = 0; i < 600; ++i) {
    if (i < 150 || i > 350) {
      ASSERT_EQ(after[i], before[i]) << i;
    }
  }
  EXPECT_GT(std::abs(after[250] - before[250]), 5);
  bench.Send(":STOP");
  bench.Wait(333);
  EXPECT_EQ(bench.Ask(":DATA:RollingStartPos:?"), "175");
  EXPECT_TRUE(bench.Send(":TimeBase:RANGE:1.000ms"));
  EXPECT_EQ(bench.Ask(":TimeBase:SCAN:?"), "OFF");
}

TEST(SamplesTest, AutoSetBringsAnySignalOntoTheScreen) {
  for (const char* signal : {"sine 50000 0.02", "square 20 4", "sine 3 1"}) {
    SCOPED_TRACE(signal);
    Bench bench;
    bench.Turn("SIGNAL1", signal);
    bench.Send(":CHANNEL1:OFFSET:-12.00div;:TRIGGER:MODE:SINGLE;:STOP;:AUTO");
    EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "RUN");
    const auto samples = bench.Read(":DATA:CHANNEL1");
    EXPECT_TRUE(Lowest(samples) >= 26 && Highest(samples) <= 125);
    EXPECT_GT(Highest(samples) - Lowest(samples), 35);
    EXPECT_NEAR(CountPeriods(samples), 4, 2);
  }
}

}  // namespace

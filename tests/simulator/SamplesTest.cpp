#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "Bench.h"

namespace {

TEST(SamplesTest, ATraceStandsWhereProbeRangeOffsetAndTimeBasePutItsSignal) {
  // Channel, probe, range, offset, time base, signal, the sample values at the top and at the
  // bottom of the trace, and how many samples behind the trigger point the top stands.
  const std::tuple<std::string, std::string, std::string, std::string, std::string, std::string,
                   int, int, std::size_t>
      cases[] = {
          {"1", "1X", "1.00V", "0.00div", "200.0us", "sine 1250 2", 75, 175, 50},
          {"2", "10X", "10.0V", "-2.00div", "1.000ms", "sine 500 1.6", 135, 215, 25},
          {"1", "1000X", "2.00V", "2.00div", "50.00ms", "sine 10 0.004", 25, 125, 25},
          {"2", "100X", "500V", "0.00div", "10.00us", "sine 25000 5", 100, 150, 50},
          {"1", "1X", "1.00V", "12.00div", "200.0us", "sine 1000 0", 0, 0, 0},
          {"1", "1X", "1.00V", "-12.00div", "200.0us", "sine 1000 0", 255, 255, 0},
      };
  for (const auto& [number, probe, range, offset, time, signal, top, bottom, quarter] : cases) {
    SCOPED_TRACE(probe + offset);
    Bench bench;
    const std::string root = ":CHANNEL" + number;
    ASSERT_TRUE(bench.Turn("SIGNAL" + number, signal));
    ASSERT_TRUE(bench.Send(root + ":PROBE:" + probe + ";" + root + ":RANGE:" + range + ";" + root +
                           ":OFFSET:" + offset + ";:TimeBase:RANGE:" + time +
                           ";:TRIGGER:Source:CH" + number));
    const auto samples = bench.Read(":DATA:CHANNEL" + number);
    ASSERT_EQ(samples.size(), 600u);
    EXPECT_NEAR(Lowest(samples), top, 1);
    EXPECT_NEAR(Highest(samples), bottom, 1);
    EXPECT_NEAR(samples[300 + quarter], top, 1.5);
    EXPECT_NEAR(samples[300 - quarter], bottom, 1.5);
  }
}

TEST(SamplesTest, TheTriggerPointStandsWhereDelayAndLevelPutIt) {
  // Delay, slope, level, the index of the sample at the trigger point, and its value.
  const std::tuple<std::string, std::string, std::string, std::size_t, int> cases[] = {
      {"0.0000s", "RISING", "-1.20div", 300, 130},
      {"0.0000s", "FALLING", "0.00div", 300, 100},
      {"-400.0us", "RISING", "1.00div", 400, 75},
      {"600.0us", "FALLING", "0.80div", 150, 80},
  };
  for (const auto& [delay, slope, level, index, sample] : cases) {
    SCOPED_TRACE(delay + slope + level);
    Bench bench;
    bench.Turn("SIGNAL1", "sine 1000 1.6");
    ASSERT_TRUE(bench.Send(":CHANNEL1:OFFSET:1.00div;:TimeBase:TRIGGER DELAY:" + delay +
                           ";:TRIGGER:SLOPE:" + slope + ";:TRIGGER:LEVEL:" + level));
    const auto samples = bench.Read(":DATA:CHANNEL1");
    EXPECT_NEAR(samples[index], sample, 1.5);
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
    ASSERT_TRUE(bench.Turn("SIGNAL1", signal));
    if (signal == "square") bench.Send(":TRIGGER:METHOD:PULSE");
    ASSERT_TRUE(bench.Send(commands));
    const auto before = bench.Read(":DATA:CHANNEL1");
    int largest = 0;
    for (int i = 0; i < 3; ++i) {
      bench.Wait(137);
      const auto after = bench.Read(":DATA:CHANNEL1");
      for (std::size_t at = 0; at < before.size(); ++at) {
        largest = std::max(largest, std::abs(after.at(at) - before[at]));
      }
    }
    EXPECT_TRUE(largest >= least && largest <= most) << largest;
  }
}

TEST(SamplesTest, ASingleShotIsArmedByTheKeyAndStopsAfterOneScreen) {
  Bench bench;
  bench.Send(":TimeBase:RANGE:20.00ms;:TRIGGER:MODE:SINGLE");
  bench.Wait(239);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "RUN");
  bench.Wait(1);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP");
  bench.Send(":RUN");
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP") << "only the key arms";
  bench.Send(":TRIGGER:LEVEL:8.00div;:KEY:RUN");
  bench.Wait(100000);
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "RUN") << "no trigger, no shot";
  bench.Send(":ForceTrig");
  EXPECT_EQ(bench.Ask(":TRIGGER:STATUS:?"), "STOP");
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
}

TEST(SamplesTest, ARollingRecordIsWrittenOverAtThePaceOfItsTimeBase) {
  Bench bench;
  bench.Turn("SIGNAL1", "ramp 0.4");
  EXPECT_TRUE(bench.Turn(":TimeBase:SCAN", "ON"));
  bench.Wait(2700);  // two passes of 1.2 s and a quarter of the third
  EXPECT_EQ(bench.Ask(":DATA:RollingStartPos:?"), "75");
  const auto before = bench.Read(":DATA:CHANNEL1");
  bench.Wait(400);
  EXPECT_EQ(bench.Ask(":DATA:RollingStartPos:?"), "175");
  const auto after = bench.Read(":DATA:CHANNEL1");
  for (std::size_t i = 0; i < 600; ++i) {
    if (i < 150 || i > 350) {
      ASSERT_EQ(after[i], before[i]) << i;
    }
  }
  EXPECT_GT(std::abs(after[250] - before[250]), 5);
  EXPECT_TRUE(bench.Send(":TimeBase:RANGE:1.000ms"));
  EXPECT_EQ(bench.Ask(":TimeBase:SCAN:?"), "OFF") << "fast time bases do not roll";
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
  }
}

}  // namespace

#include <gtest/gtest.h>

#include "support/TransferBench.h"
#include "transfers/ChannelOptions.h"
#include "transfers/MeasureReader.h"
#include "transfers/WaveReader.h"

namespace oriolemark {
namespace {

struct ReaderBench : TransferBench {
  // The answers to the settings and the blocks, in their order.
  ReaderBench(int ioType, const std::string& answers) {
    Connect(ioType);
    sheet.WaveCount = 1;
    for (const auto& row : Rows(answers)) {
      script.Answer(row[0], row[1] + (row[1].starts_with("0x") ? " \n" : "\n"));
    }
  }

  WaveReader reader{
      {waiting, scope, sheet, scratch, progress.Progressing(), [] { return "11/21/26"; }}};
};

// Link, channel asked for, FORMAT, SCAN, ACQUISITION, the blocks, and which of them is in CH1Data,
// CH1Min, CH2Data and CH2Min. Any other number is USB.
constexpr const char* kModes = R"(
2 | CH1 | Y-T | OFF | NORMAL | :DATA:CHANNEL1 | 1 0 0 0
2 | CH2 | Y-T | OFF | AVERAGE | :DATA:CHANNEL2 | 0 0 1 0
2 | CH1CH2 | Y-T | OFF | - | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
2 | CH1CH2 | Y-T | ON | - | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
2 | CH1 | Y-T | OFF | ENVELOPE | :DATA:EnvelopeMax:CH1 :DATA:EnvelopeMin:CH1 | 1 2 0 0
2 | CH1CH2 | Y-T | OFF | ENVELOPE | :DATA:EnvelopeMax:CH1 :DATA:EnvelopeMin:CH1
  :DATA:EnvelopeMax:CH2 :DATA:EnvelopeMin:CH2 | 1 2 3 4
2 | CH1 | X-Y | OFF | NORMAL | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
1 | CH1 | X-Y | OFF | NORMAL | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
0 | CH1 | X-Y | OFF | NORMAL | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
7 | CH1 | X-Y | OFF | NORMAL | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
)";

// The first samples of the block of this number, whose bytes are 2, its number and 255. Over GPIB
// and USB each stands one place lower. The X channel of an X-Y figure alone is not clamped.
std::array<int, 4> SamplesOf(char block, bool serial, bool clamped) {
  if (block == '0') return {};
  const int low = clamped ? 0 : -24, number = block - '0', high = clamped ? 199 : 229;
  if (serial) return {0, low, number, high};
  return {2, number, high, high};
}

TEST(WaveReader, EachModeReadsItsBlocksIntoTheirArrays) {
  for (const auto& row : Rows(kModes)) {
    SCOPED_TRACE(testing::PrintToString(row));
    const bool scan = row[3] == "ON", isYT = row[2] == "Y-T";
    ReaderBench bench(std::stoi(row[0]), ":DATA:WinMemSize:? | 3");
    bench.script.Answer(":TimeBase:FORMAT:?", row[2] + "\n");
    bench.script.Answer(":TimeBase:SCAN:?", row[3] + "\n");
    if (!scan) bench.script.Answer(":ACQUIRE:ACQUISITION:?", row[4] + "\n");
    if (scan) bench.script.Answer(":DATA:RollingStartPos:?", "12\n");
    if (scan) bench.script.Answer(":DATA:RollingEraseWidth:?", "32768\n");
    // Silence ends a reading over USB.
    for (const char* field : {"CHANNEL1:RANGE", "CHANNEL2:RANGE", "CHANNEL1:OFFSET",
                              "CHANNEL2:OFFSET", "TimeBase:RANGE", "TimeBase:TRIGGER DELAY"}) {
      if (!isYT) bench.script.Answer(std::string(":") + field + ":?", "1.00V\n");
    }
    const char* digit = "BCDE";
    for (const auto& block : Split(row[5], ' ')) {
      bench.script.Answer(block, std::string("0x02 0x1") + *digit++ + " 0xFF \n");
    }
    WaveRecord& record = bench.sheet.Waves[0];
    record.Envelope = true;
    record.RollingEraseWidth = 7;
    bench.reader.ReadWaveform(row[1]);
    EXPECT_TRUE(bench.script.exchanges.empty());
    EXPECT_EQ(record.Date, "11/21/26");
    EXPECT_EQ(record.Channels, !isYT ? 3 : row[1] == "CH1" ? 1 : row[1] == "CH2" ? 2 : 3);
    const bool envelope = scan || row[4] == "ENVELOPE";
    EXPECT_EQ(record.Envelope, envelope) << "a rolling record keeps it";
    EXPECT_EQ(record.RollingStartPos, scan ? 12 : 0);
    EXPECT_EQ(record.RollingEraseWidth, 7) << "no more than 16 bits are taken";
    const SampleArray* const arrays[] = {&record.CH1Data, &record.CH1Min, &record.CH2Data,
                                         &record.CH2Min};
    for (std::size_t i = 0; i < 4; ++i) {
      const SampleArray& data = *arrays[i];
      EXPECT_EQ((std::array{data[0], data[1], data[2], data[3]}),
                SamplesOf(row[6][2 * i], row[0] == "2", isYT || i > 0))
          << i;
    }
  }
}

TEST(WaveReader, SamplesBehindTheLastPlaceAreDropped) {
  std::string block;
  for (int i = 0; i < 17005; ++i) block += i < 17000 ? "0x1B " : "0x1C ";
  ReaderBench bench(kLinkGpib, ":DATA:WinMemSize:? | 20000 || :DATA:CHANNEL1 | " + block);
  bench.reader.ReadWaveform("CH1");
  const WaveRecord& record = bench.sheet.Waves[0];
  EXPECT_EQ(record.Count, 20000);
  EXPECT_EQ(record.CH1Data[16999], 1);
  EXPECT_EQ(record.CH1Data[17000], 2) << "over GPIB the first stands at 0";
}

TEST(WaveReader, OddSamplesAmongPlainOnesKeepTheirPlaces) {
  const std::pair<std::string, std::vector<int>> blocks[] = {
      {"0x1B 0x1c 0x1D 0x1E", {1, 0, 3, 3, 0}},
      {"0x1B 0x001C  1D 0x1E0x1F 0x1B0", {1, 2, 0, 3, 5, 5, 0}},
      {"0x1B,0x1C 0x1D ", {2, 3, 3, 0}}};
  for (const auto& [block, samples] : blocks) {
    ReaderBench bench(kLinkRS232, ":DATA:WinMemSize:? | 8 || :TimeBase:FORMAT:? | Y-T");
    bench.script.Answer(":DATA:CHANNEL1", block + "\n");
    bench.reader.ReadWaveform("CH1");
    const auto rows = bench.sheet.Waves[0].CH1Data.Rows();
    EXPECT_EQ(std::vector<int>(rows.begin() + 1, rows.begin() + 1 + std::ssize(samples)), samples)
        << block;
  }
}

TEST(WaveReader, ASerialBlockShowsItsProgressUntilItEnds) {
  ReaderBench bench(kLinkRS232, ":DATA:WinMemSize:? | 4 || :TimeBase:FORMAT:? | Y-T");
  bench.script.Answer(":DATA:CHANNEL1", "0x1B 0x1C ", Milliseconds(700));
  bench.port.hear = [&, answer = bench.port.hear](const std::string& command) {
    answer(command);
    if (command == ":DATA:CHANNEL1") bench.port.ArriveAfter(Milliseconds(1300), "0x1D 0x1E \n");
  };
  bench.reader.ReadWaveform("CH1");
  EXPECT_EQ(bench.sheet.Waves[0].CH1Data[4], 4);
  EXPECT_DOUBLE_EQ(bench.progress.ProgressBar1.Value(), 50)
      << "half of it was there at the last tick";
}

TEST(frmPrgress, StaysForAFifthOfASecondBehindItsTransferAndCannotBeClosed) {
  TransferBench bench;
  bench.Connect(kLinkGpib);
  bench.script.Answer(":TRIGGER:STATUS:?", "RUN\n");
  Milliseconds read{0};
  bench.progress.procedures.ReadWaveform = [&](const std::string&) {
    EXPECT_FALSE(bench.progress.Unload());
    read = bench.clock.Now();
  };
  EXPECT_TRUE(bench.progress.Transfer(TransferKind::WaveCH1, "Waveform Data Loading"));
  EXPECT_EQ(bench.clock.Now() - read, Milliseconds(200));
  EXPECT_EQ(Bits(bench.progress.Loaded(), bench.transfer.TransferActive), "00");
}

// The queries in their order, and where the text of each belongs.
const auto kAsked = Rows(R"(
Freq | 7 || Vpp | 0 || Vmax | 1 || Vmin | 2 || Vtop | 4 || Vavg | 3 || Vbase | 5 || Vrms | 6
Vamp | 15 || +Duty | 16 || -Duty | 17 || Period | 10 || RiseTime | 8 || FallTime | 9
+Width | 11 || -Width | 12 || Vovr | 13 || Vpre | 14
)");

struct MeasureBench : TransferBench {
  MeasureBench() { Connect(kLinkGpib); }
  // Every query gets this reply, with the name of its quantity for "$".
  void Read(const std::string& channel, const std::string& reply) {
    const std::string source = channel == "CH1" ? "1" : "2";
    script.Answer(":CHANNEL" + source + ":RANGE:?", "2.00V\n");
    script.Answer(":TimeBase:RANGE:?", "500us\n");
    for (const auto& row : kAsked) {
      script.Answer(":MEASURE:" + row[0], Filled(reply, '$', row[0]) + "\n");
    }
    reader.ReadMeasures(channel);
  }
  MeasureReader reader{
      {waiting, scope, scratch, progress.Progressing(), [] { return "11/21/26"; }}};
};

TEST(MeasureReader, AsksAllOfOneChannelAtItsPaceAndKeepsItsTitle) {
  for (const std::string channel : {"CH1", "CH2"}) {
    MeasureBench bench;
    bench.Read(channel, "$=1.0V");
    EXPECT_TRUE(bench.script.exchanges.empty());
    EXPECT_EQ(bench.script.sent[2], ":MEASURE:CURRENT_SRC:" + channel);
    EXPECT_EQ(bench.script.sent.size(), 21u);
    std::size_t characters = 0;
    for (const auto& command : bench.script.sent) characters += command.size();
    EXPECT_EQ(bench.clock.Now(), Milliseconds(200 + 17 * 100 + 5 * characters));
    EXPECT_DOUBLE_EQ(bench.progress.ProgressBar1.Value(), 17 * 5.6) << "no step beyond 100";
    EXPECT_EQ(bench.scratch.TransferText, channel + " 2.00V  500us [Date:11/21/26]");
  }
}

TEST(MeasureReader, AnyReplyLeavesATextByTheRuleOfItsQuantity) {
  // The quantity, the reply, and the text after a text that was "old".
  for (const auto& row : Rows(R"(
Vpp | Vpp=1.20V | 1.20V || Vpp | Vpp= | - || Vpp | Vpp | old || Vpp | - | old || Vmax | Vmax | old
Vpp | Vpp *** | *** || Vmax | Vmax>1.0V | 1.0V || Vbase | Vbase | old || Vbase | Vbase=1V | 1V
+Duty | +Duty=50.0 | 50.0% || +Duty | +Duty=*** | *** || +Duty | +Duty= | % || +Duty | - | %
-Duty | Duty | Duty% || -Duty | * | * || Vovr | Vovr=5 | 5% || Vpre | Vpre | Vpre%
Freq | Freq=1.000kHz | 1.000kHz || Freq | Freq>1MHz | >1MHz || Freq | Freq<1Hz | *****
Freq | =a=b | a=b || Freq | - | ***** || Period | Period<1us | <1us || Period | Period>1us | *****
Period | Period ** | ***** || RiseTime | <=1us | 1us || -Width | < | < || FallTime | = | -
)")) {
    MeasureBench bench;
    bench.scratch.TransferValues.fill("old");
    bench.Read("CH1", row[1]);
    const auto at = std::ranges::find(kAsked, row[0], [](auto& asked) { return asked[0]; });
    EXPECT_EQ(bench.scratch.TransferValues[std::stoul((*at)[1])], row[2])
        << row[0] << " " << row[1];
  }
}

TEST(ChannelOptions, FollowTheChannelsThatAreOn) {
  // The option that was chosen, the channels that are on, which options are on offer then, and
  // which is chosen. A view has the options CH1, CH2 and both, or the first two alone.
  for (const auto& row : Rows(R"(
- | ON | ON | 11 | 0 || 1 | ON | ON | 11 | 1 || 1 | ON | OFF | 10 | 0 || - | OFF | ON | 01 | 1
0 | OFF | ON | 01 | 1 || 1 | OFF | OFF | 00 | - || 0 | on | ON | 01 | 1 || - | ON | ON | 111 | 0
2 | ON | ON | 111 | 2 || 2 | ON | OFF | 100 | 0 || 2 | OFF | ON | 010 | 1 || 2 | OFF | OFF | 000 | -
)")) {
    SCOPED_TRACE(testing::PrintToString(row));
    OptionGroup options(static_cast<int>(row[3].size()));
    if (!row[0].empty()) options.Select(std::stoi(row[0]));
    CtrlSettings settings;
    settings.CH1Display = row[1];
    settings.CH2Display = row[2];
    FollowChannels(options, settings);
    std::string offered;
    for (int i = 0; i < options.Count(); ++i) offered += options.OptionEnabled(i) ? '1' : '0';
    EXPECT_EQ(offered, row[3]);
    EXPECT_EQ(options.Selected(), row[4].empty() ? OptionGroup::kNone : std::stoi(row[4]));
  }
}

}  // namespace
}  // namespace oriolemark

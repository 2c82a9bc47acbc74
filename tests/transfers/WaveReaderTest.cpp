#include "transfers/WaveReader.h"

#include <gtest/gtest.h>

#include "support/TransferBench.h"

namespace oriolemark {
namespace {

struct ReaderBench : TransferBench {
  // What the settings and the blocks are answered, in their order.
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

// The bytes 0, 125 and 255 of one block in CH1Data and CH2Data, from index 0: over GPIB and USB
// each stands one place lower. Of an X-Y figure the X channel alone is not clamped.
using Samples = std::array<int, 4>;
const std::tuple<const char*, int, Samples, Samples> kReadings[] = {
    {"RS232", kLinkRS232, {0, -26, 99, 229}, {0, 0, 99, 199}},
    {"GPIB", kLinkGpib, {0, 99, 229, 229}, {0, 99, 199, 199}},
    {"USB", kLinkUsb, {0, 99, 229, 229}, {0, 99, 199, 199}},
    {"any other number is USB", 7, {0, 99, 229, 229}, {0, 99, 199, 199}}};

TEST(WaveReader, EachSampleOfABlockStandsWhereTheTransportPutsIt) {
  for (const auto& [name, ioType, first, second] : kReadings) {
    SCOPED_TRACE(name);
    ReaderBench bench(ioType, R"(
:DATA:WinMemSize:? | 3 || :TimeBase:FORMAT:? | X-Y || :TimeBase:SCAN:? | OFF
:ACQUIRE:ACQUISITION:? | NORMAL || :CHANNEL1:RANGE:? | 1.00V || :CHANNEL2:RANGE:? | 2.00V
:CHANNEL1:OFFSET:? | 0.00div || :CHANNEL2:OFFSET:? | 1.00div || :TimeBase:RANGE:? | 1.000ms
:TimeBase:TRIGGER DELAY:? | 0.0000s
:DATA:CHANNEL1 | 0x00 0x7D 0xFF || :DATA:CHANNEL2 | 0x00 0x7D 0xFF
)");
    bench.reader.ReadWaveform("CH1");
    const WaveRecord& record = bench.sheet.Waves[0];
    const auto read = [](const SampleArray& data) {
      return Samples{data[0], data[1], data[2], data[3]};
    };
    EXPECT_EQ(read(record.CH1Data), first);
    EXPECT_EQ(read(record.CH2Data), second);
    EXPECT_EQ(record.Date, "11/21/26");
    EXPECT_EQ(Bits(bench.script.exchanges.empty(), bench.prompts.shown.empty()), "11");
  }
}

// Channel asked for, SCAN, ACQUISITION, the blocks, and which of them stands in CH1Data, CH1Min,
// CH2Data and CH2Min.
constexpr const char* kModes = R"(
CH1 | OFF | NORMAL | :DATA:CHANNEL1 | 1 0 0 0
CH2 | OFF | AVERAGE | :DATA:CHANNEL2 | 0 0 1 0
CH1CH2 | OFF | - | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
CH1CH2 | ON | - | :DATA:CHANNEL1 :DATA:CHANNEL2 | 1 0 2 0
CH1 | OFF | ENVELOPE | :DATA:EnvelopeMax:CH1 :DATA:EnvelopeMin:CH1 | 1 2 0 0
CH1CH2 | OFF | ENVELOPE | :DATA:EnvelopeMax:CH1 :DATA:EnvelopeMin:CH1 :DATA:EnvelopeMax:CH2
  :DATA:EnvelopeMin:CH2 | 1 2 3 4
)";

TEST(WaveReader, EachModeReadsItsBlocksIntoTheirArrays) {
  for (const auto& row : Rows(kModes)) {
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    const bool scan = row[1] == "ON";
    ReaderBench bench(kLinkRS232, ":DATA:WinMemSize:? | 1 || :TimeBase:FORMAT:? | Y-T");
    const auto& answer = [&](auto... exchange) { bench.script.Answer(exchange...); };
    answer(":TimeBase:SCAN:?", row[1] + "\n");
    if (!scan) answer(":ACQUIRE:ACQUISITION:?", row[2] + "\n");
    if (scan) answer(":DATA:RollingStartPos:?", "12\n");
    if (scan) answer(":DATA:RollingEraseWidth:?", "32768\n");
    const char* digit = "BCDE";
    for (const auto& block : Split(row[3], ' '))
      answer(block, std::string("0x1") + *digit++ + " \n");
    WaveRecord& record = bench.sheet.Waves[0];
    record.Envelope = true;
    record.RollingEraseWidth = 7;
    bench.reader.ReadWaveform(row[0]);
    EXPECT_TRUE(bench.script.exchanges.empty());
    EXPECT_EQ(record.Channels, row[0] == "CH1" ? 1 : row[0] == "CH2" ? 2 : 3);
    const bool envelope = scan || row[2] == "ENVELOPE";
    EXPECT_EQ(record.Envelope, envelope) << "a rolling record keeps it";
    EXPECT_EQ(record.RollingStartPos, scan ? 12 : 0);
    EXPECT_EQ(record.RollingEraseWidth, 7) << "no more than 16 bits are taken";
    std::string stands;
    for (const auto& samples : {record.CH1Data, record.CH1Min, record.CH2Data, record.CH2Min}) {
      stands += std::to_string(samples[1]) + " ";
    }
    EXPECT_EQ(stands, row[4] + " ");
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

TEST(WaveReader, ASerialBlockShowsItsProgressUntilItEnds) {
  ReaderBench bench(kLinkRS232, "");
  bench.port.hear = [&](const std::string& command) {
    if (command == ":DATA:WinMemSize:?") bench.port.ArriveAfter(Milliseconds(1), "4\n");
    if (command == ":TimeBase:FORMAT:?") bench.port.ArriveAfter(Milliseconds(1), "Y-T\n");
    if (command != ":DATA:CHANNEL1") return;
    bench.port.ArriveAfter(Milliseconds(700), "0x1B 0x1C ");
    bench.port.ArriveAfter(Milliseconds(1300), "0x1D 0x1E \n");
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

TEST(WaveReader, AChannelTableKeepsTokensAndTitle) {
  ReaderBench bench(kLinkGpib, R"(
:DATA:WinMemSize:? | 2 || :CHANNEL2:RANGE:? | 2.00V || :CHANNEL2:OFFSET:? | 1.50div
:TimeBase:RANGE:? | 500.0us || :TimeBase:TRIGGER DELAY:? | 10.00us
:DATA:CHANNEL2 | 0x01 0x1F
)");
  bench.reader.ReadChannelData("CH2");
  EXPECT_EQ(bench.scratch.TransferText, "CH2 2.00V  500.0us  Size=2 [Date:11/21/26]");
  EXPECT_EQ(bench.scratch.TransferTokens[1], "0x01") << "on every transport from index 1";
  EXPECT_EQ(bench.scratch.TransferSamples[2], 31);
  EXPECT_DOUBLE_EQ(bench.scratch.TransferVoltOffset, 3.0);
  EXPECT_DOUBLE_EQ(bench.scratch.TransferTriggerDelay, 1e-5);
}

}  // namespace
}  // namespace oriolemark

#include "transfers/WaveReader.h"

#include <gtest/gtest.h>

#include "support/LinkBench.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

struct ReaderBench : LinkBench {
  explicit ReaderBench(int ioType) {
    Connect(ioType);
    sheet.WaveCount = 1;
  }

  void AnswerQueries(const std::string& size, const std::string& format) {
    script.Answer(":DATA:WinMemSize:?", size + "\n");
    script.Answer(":TimeBase:FORMAT:?", format + "\n");
    script.Answer(":TimeBase:SCAN:?", "OFF\n");
    script.Answer(":ACQUIRE:ACQUISITION:?", "NORMAL\n");
  }
  void AnswerTime() {
    script.Answer(":TimeBase:RANGE:?", "1.000ms\n");
    script.Answer(":TimeBase:TRIGGER DELAY:?", "0.0000s\n");
  }
  // Reads a plain record of channel 1.
  const WaveRecord& Read(const std::string& size, const std::string& block) {
    AnswerQueries(size, "Y-T");
    script.Answer(":CHANNEL1:RANGE:?", "1.00V\n");
    script.Answer(":CHANNEL1:OFFSET:?", "0.00div\n");
    AnswerTime();
    script.Answer(":DATA:CHANNEL1", block);
    reader.ReadWaveform("CH1");
    return sheet.Waves[0];
  }

  MemoryStore store;
  TransferState transfer;
  DataSheet sheet;
  TransferScratch scratch;
  frmPrgress progress{clock, waiting, store, state, transfer, scope};
  WaveReader reader{{settings, state, waiting, scope, rs232, gpib, usb, sheet, scratch,
                     progress.Progressing(), [] { return "11/21/26"; }}};
};

struct TransportRow {
  const char* name;
  int ioType;
  std::array<int, 4> rows;  // CH1Data from index 0
};

// The bytes 0, 125 and 255 of one block: over GPIB and USB each stands one place lower.
const TransportRow kTransports[] = {
    {"RS232", kLinkRS232, {0, 0, 99, 199}},
    {"GPIB", kLinkGpib, {0, 99, 199, 199}},
    {"USB", kLinkUsb, {0, 99, 199, 199}},
    {"any other number is USB", 7, {0, 99, 199, 199}},
};

TEST(WaveReader, TheFirstSampleOfABlockStandsWhereTheTransportPutsIt) {
  for (const TransportRow& row : kTransports) {
    SCOPED_TRACE(row.name);
    ReaderBench bench(row.ioType);
    const WaveRecord& record = bench.Read("3", "0x00 0x7D 0xFF \n");
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(record.CH1Data[i], row.rows[static_cast<std::size_t>(i)]) << i;
    }
    EXPECT_EQ(record.Date, "11/21/26");
    EXPECT_EQ(bench.script.LeftOver(), 0u);
    EXPECT_TRUE(bench.prompts.shown.empty());
  }
}

TEST(WaveReader, TheXChannelOfAnXYFigureAloneIsNotClamped) {
  ReaderBench bench(kLinkRS232);
  bench.AnswerQueries("2", "X-Y");
  bench.script.Answer(":CHANNEL1:RANGE:?", "1.00V\n");
  bench.script.Answer(":CHANNEL2:RANGE:?", "2.00V\n");
  bench.script.Answer(":CHANNEL1:OFFSET:?", "0.00div\n");
  bench.script.Answer(":CHANNEL2:OFFSET:?", "1.00div\n");
  bench.AnswerTime();
  bench.script.Answer(":DATA:CHANNEL1", "0x00 0xFF \n");
  bench.script.Answer(":DATA:CHANNEL2", "0x00 0xFF \n");
  bench.reader.ReadWaveform("CH1");
  const WaveRecord& record = bench.sheet.Waves[0];
  EXPECT_EQ(record.Channels, 3);
  EXPECT_EQ(record.CH1Data[1], -26);
  EXPECT_EQ(record.CH1Data[2], 229);
  EXPECT_EQ(record.CH2Data[1], 0);
  EXPECT_EQ(record.CH2Data[2], 199);
}

TEST(WaveReader, ABlockThatNeverComesLeavesTheOldTail) {
  ReaderBench bench(kLinkRS232);
  bench.scratch.TransferSize = 3;
  bench.scratch.TransferSamples.Store(2, 150);
  const WaveRecord& record = bench.Read("abc", "");
  EXPECT_EQ(record.Count, 3) << "a size that is no number leaves the one before";
  EXPECT_EQ(record.CH1Data[1], 0);
  EXPECT_EQ(record.CH1Data[2], 124) << "what an earlier block left is converted";
}

TEST(WaveReader, NoSizeHangsOrGrowsTheRead) {
  const std::pair<const char*, int> rows[] = {
      {"0", 0}, {"-5", -5}, {"2147483647", 2147483647}, {"99999999999", 0}, {"", 0}, {"1e3", 1000}};
  for (const auto& [reply, count] : rows) {
    SCOPED_TRACE(reply);
    ReaderBench bench(kLinkRS232);
    EXPECT_EQ(bench.Read(reply, "0x7D \n").Count, count);
    EXPECT_EQ(bench.script.LeftOver(), 0u);
  }
}

TEST(WaveReader, AChannelTableKeepsTokensAndTitle) {
  ReaderBench bench(kLinkGpib);
  bench.script.Answer(":DATA:WinMemSize:?", "2\n");
  bench.script.Answer(":CHANNEL2:RANGE:?", "2.00V\n");
  bench.script.Answer(":CHANNEL2:OFFSET:?", "1.50div\n");
  bench.script.Answer(":TimeBase:RANGE:?", "500.0us\n");
  bench.script.Answer(":TimeBase:TRIGGER DELAY:?", "10.00us\n");
  bench.script.Answer(":DATA:CHANNEL2", "0x01 0x1F \n");
  bench.reader.ReadChannelData("CH2");
  EXPECT_EQ(bench.scratch.TransferText, "CH2 2.00V  500.0us  Size=2 [Date:11/21/26]");
  EXPECT_EQ(bench.scratch.TransferTokens[1], "0x01") << "on every transport from index 1";
  EXPECT_EQ(bench.scratch.TransferSamples[2], 31);
  EXPECT_DOUBLE_EQ(bench.scratch.TransferVoltOffset, 3.0);
  EXPECT_DOUBLE_EQ(bench.scratch.TransferTriggerDelay, 1e-5);
}

}  // namespace
}  // namespace oriolemark

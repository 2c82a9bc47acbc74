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

  // Commands and what each is answered, in their order.
  void Answer(const std::vector<std::pair<const char*, const char*>>& answers) {
    for (const auto& [command, reply] : answers) script.Answer(command, reply + std::string("\n"));
  }

  MemoryStore store;
  TransferState transfer;
  DataSheet sheet;
  TransferScratch scratch;
  ScreenPointer pointer;
  frmPrgress progress{clock, waiting, store, state, transfer, scope, pointer};
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
    bench.Answer({{":DATA:WinMemSize:?", "3"},
                  {":TimeBase:FORMAT:?", "Y-T"},
                  {":TimeBase:SCAN:?", "OFF"},
                  {":ACQUIRE:ACQUISITION:?", "NORMAL"},
                  {":CHANNEL1:RANGE:?", "1.00V"},
                  {":CHANNEL1:OFFSET:?", "0.00div"},
                  {":TimeBase:RANGE:?", "1.000ms"},
                  {":TimeBase:TRIGGER DELAY:?", "0.0000s"},
                  {":DATA:CHANNEL1", "0x00 0x7D 0xFF "}});
    bench.reader.ReadWaveform("CH1");
    const WaveRecord& record = bench.sheet.Waves[0];
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
  bench.Answer({{":DATA:WinMemSize:?", "2"},
                {":TimeBase:FORMAT:?", "X-Y"},
                {":TimeBase:SCAN:?", "OFF"},
                {":ACQUIRE:ACQUISITION:?", "NORMAL"},
                {":CHANNEL1:RANGE:?", "1.00V"},
                {":CHANNEL2:RANGE:?", "2.00V"},
                {":CHANNEL1:OFFSET:?", "0.00div"},
                {":CHANNEL2:OFFSET:?", "1.00div"},
                {":TimeBase:RANGE:?", "1.000ms"},
                {":TimeBase:TRIGGER DELAY:?", "0.0000s"},
                {":DATA:CHANNEL1", "0x00 0xFF "},
                {":DATA:CHANNEL2", "0x00 0xFF "}});
  bench.reader.ReadWaveform("CH1");
  const WaveRecord& record = bench.sheet.Waves[0];
  EXPECT_EQ(record.Channels, 3);
  EXPECT_EQ(record.CH1Data[1], -26);
  EXPECT_EQ(record.CH1Data[2], 229);
  EXPECT_EQ(record.CH2Data[1], 0);
  EXPECT_EQ(record.CH2Data[2], 199);
}

TEST(WaveReader, AChannelTableKeepsTokensAndTitle) {
  ReaderBench bench(kLinkGpib);
  bench.Answer({{":DATA:WinMemSize:?", "2"},
                {":CHANNEL2:RANGE:?", "2.00V"},
                {":CHANNEL2:OFFSET:?", "1.50div"},
                {":TimeBase:RANGE:?", "500.0us"},
                {":TimeBase:TRIGGER DELAY:?", "10.00us"},
                {":DATA:CHANNEL2", "0x01 0x1F "}});
  bench.reader.ReadChannelData("CH2");
  EXPECT_EQ(bench.scratch.TransferText, "CH2 2.00V  500.0us  Size=2 [Date:11/21/26]");
  EXPECT_EQ(bench.scratch.TransferTokens[1], "0x01") << "on every transport from index 1";
  EXPECT_EQ(bench.scratch.TransferSamples[2], 31);
  EXPECT_DOUBLE_EQ(bench.scratch.TransferVoltOffset, 3.0);
  EXPECT_DOUBLE_EQ(bench.scratch.TransferTriggerDelay, 1e-5);
}

}  // namespace
}  // namespace oriolemark

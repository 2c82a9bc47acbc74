#include "transfers/WaveReader.h"

#include <gtest/gtest.h>

#include "support/Tables.h"
#include "support/TransferBench.h"

namespace oriolemark {
namespace {

struct ReaderBench : TransferBench {
  explicit ReaderBench(int ioType) {
    Connect(ioType);
    sheet.WaveCount = 1;
  }

  // What the settings are answered, in their order.
  void Answer(const char* answers) {
    for (const auto& row : Rows(answers)) script.Answer(row[0], row[1] + "\n");
  }

  WaveReader reader{{settings, state, waiting, scope, rs232, gpib, usb, sheet, scratch,
                     progress.Progressing(), [] { return "11/21/26"; }}};
};

// The bytes 0, 125 and 255 of one block in CH1Data, from index 0: over GPIB and USB each stands one
// place lower.
const std::tuple<const char*, int, std::array<int, 4>> kTransports[] = {
    {"RS232", kLinkRS232, {0, 0, 99, 199}},
    {"GPIB", kLinkGpib, {0, 99, 199, 199}},
    {"USB", kLinkUsb, {0, 99, 199, 199}},
    {"any other number is USB", 7, {0, 99, 199, 199}}};

TEST(WaveReader, TheFirstSampleOfABlockStandsWhereTheTransportPutsIt) {
  for (const auto& [name, ioType, rows] : kTransports) {
    SCOPED_TRACE(name);
    ReaderBench bench(ioType);
    bench.Answer(R"(
:DATA:WinMemSize:? | 3 || :TimeBase:FORMAT:? | Y-T || :TimeBase:SCAN:? | OFF
:ACQUIRE:ACQUISITION:? | NORMAL || :CHANNEL1:RANGE:? | 1.00V || :CHANNEL1:OFFSET:? | 0.00div
:TimeBase:RANGE:? | 1.000ms || :TimeBase:TRIGGER DELAY:? | 0.0000s
)");
    bench.script.Answer(":DATA:CHANNEL1", "0x00 0x7D 0xFF \n");
    bench.reader.ReadWaveform("CH1");
    const WaveRecord& record = bench.sheet.Waves[0];
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(record.CH1Data[static_cast<int>(i)], rows[i]);
    EXPECT_EQ(record.Date, "11/21/26");
    EXPECT_EQ(bench.script.LeftOver(), 0u);
    EXPECT_TRUE(bench.prompts.shown.empty());
  }
}

TEST(WaveReader, TheXChannelOfAnXYFigureAloneIsNotClamped) {
  ReaderBench bench(kLinkRS232);
  bench.Answer(R"(
:DATA:WinMemSize:? | 2 || :TimeBase:FORMAT:? | X-Y || :TimeBase:SCAN:? | OFF
:ACQUIRE:ACQUISITION:? | NORMAL || :CHANNEL1:RANGE:? | 1.00V || :CHANNEL2:RANGE:? | 2.00V
:CHANNEL1:OFFSET:? | 0.00div || :CHANNEL2:OFFSET:? | 1.00div || :TimeBase:RANGE:? | 1.000ms
:TimeBase:TRIGGER DELAY:? | 0.0000s
)");
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

TEST(WaveReader, AChannelTableKeepsTokensAndTitle) {
  ReaderBench bench(kLinkGpib);
  bench.Answer(R"(
:DATA:WinMemSize:? | 2 || :CHANNEL2:RANGE:? | 2.00V || :CHANNEL2:OFFSET:? | 1.50div
:TimeBase:RANGE:? | 500.0us || :TimeBase:TRIGGER DELAY:? | 10.00us
)");
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

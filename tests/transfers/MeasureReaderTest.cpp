#include "transfers/MeasureReader.h"

#include <gtest/gtest.h>

#include "support/TransferBench.h"

namespace oriolemark {
namespace {

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

TEST(MeasureReader, AsksAllOfOneChannelAtItsPaceAndKeepsTextsAndTitle) {
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
    for (const auto& row : kAsked) {
      const bool percent = row[0].ends_with("Duty") || row[0] == "Vovr" || row[0] == "Vpre";
      const auto& text = bench.scratch.TransferValues[std::stoul(row[1])];
      EXPECT_EQ(text, percent ? "1.0V%" : "1.0V") << row[0];
    }
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

}  // namespace
}  // namespace oriolemark

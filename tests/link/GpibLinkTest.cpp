#include <gtest/gtest.h>

#include "support/LinkBench.h"

namespace oriolemark {
namespace {

using Calls = std::vector<std::string>;

class GpibLinkTest : public ::testing::Test {
 protected:
  GpibLinkTest() {
    bench.Connect(kLinkGpib);
    bench.gpib.GPIBInit();
    bench.gpibDriver.calls.clear();
  }

  LinkBench bench;
};

TEST_F(GpibLinkTest, DeviceThatDoesNotOpenOrClearIsToldAndLeavesNoConnection) {
  bench.settings.GPIB_Addr = 30;
  bench.gpibDriver.Fail("ibclr", 0x8100, 2);
  bench.scope.ConnectScope();
  EXPECT_EQ(bench.gpibDriver.calls, (Calls{"ibdev 0 30 0 13 1 0", "ibclr 3", "ibonl 3 0"}));
  EXPECT_FALSE(bench.state.LinkOpened || bench.state.ScopeConnected);
  bench.gpibDriver.calls.clear();
  bench.gpibDriver.Fail("ibdev", 0x8000, 0);
  bench.scope.ConnectScope();
  EXPECT_EQ(bench.gpibDriver.calls, Calls{"ibdev 0 30 0 13 1 0"}) << "and is not cleared";
  EXPECT_FALSE(bench.state.LinkOpened || bench.state.ScopeConnected);
  EXPECT_EQ(
      bench.prompts.shown,
      (std::vector<Message>{
          Critical("Unable to clear device\ribsta = &H8100\riberr = 2 <ENOL>", "Error"),
          Critical("Unable to open GPIB IO device\ribsta = &H8000\riberr = 0", "GPIB Init")}));
}

TEST_F(GpibLinkTest, CommandGoesOutBareAndBlocksFiveMillisecondsACharacter) {
  bench.gpib.GPIBSend(":TRIG%50");
  bench.gpib.GPIBSend("");
  EXPECT_EQ(bench.gpibDriver.calls, Calls{"ibwrt 3 :TRIG%50"});
  EXPECT_EQ(bench.clock.Now(), Milliseconds(40));
}

TEST_F(GpibLinkTest, ReplyIsWhatStandsInFrontOfTheLineEndInsideTheBuffer) {
  const std::string most(1023, 'x');
  const std::pair<std::string, std::string> rows[] = {{"1.00V\n", "1.00V"}, {"a\nb\n", "a"},
                                                      {"\n", ""},           {"1.00V", ""},
                                                      {most + "\n", most},  {most + "x\n", ""}};
  for (const auto& [answer, reply] : rows) {
    LinkBench fresh;
    fresh.Connect(kLinkGpib);
    fresh.script.Answer(":A:?", answer);
    EXPECT_EQ(fresh.scope.AskScope(":A:?"), reply);
    EXPECT_EQ(fresh.gpibDriver.calls.back(), "ibrd 0 1024");
  }
}

TEST_F(GpibLinkTest, SilentInstrumentIsGivenUpAfterTenSeconds) {
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
  EXPECT_EQ(bench.prompts.shown,
            std::vector<Message>{
                Critical("Unable to read from device\ribsta = &HC000\riberr = 6 <EABO>", "Error")});
  EXPECT_EQ(bench.clock.Now(), Milliseconds(10020));
}

TEST_F(GpibLinkTest, DeadDeviceShowsTwoMessagesForOneQuestionAndStaysConnected) {
  bench.gpibDriver.Fail("ibwrt", 0x8100, 9);
  bench.gpibDriver.Fail("ibrd", 0x1F100, 21);
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
  EXPECT_EQ(bench.prompts.shown,
            (std::vector<Message>{
                Critical("Unable to write to device\ribsta = &H8100\riberr = 9 <>", "Error"),
                Critical("Unable to read from device\ribsta = &HF100\riberr = 21 <>", "Error")}));
  EXPECT_EQ(bench.gpibDriver.calls,
            (Calls{"ibwrt 3 :A:?", "ibonl 3 0", "ibrd 3 1024", "ibonl 3 0"}));
  EXPECT_EQ(bench.clock.Now(), Milliseconds(20));
  EXPECT_TRUE(bench.state.ScopeConnected);
}

}  // namespace
}  // namespace oriolemark

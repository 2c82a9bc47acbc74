#include <gtest/gtest.h>

#include "support/LinkBench.h"

namespace oriolemark {
namespace {

using Calls = std::vector<std::string>;

Message Critical(const std::string& title, const std::string& text) {
  return {.text = text, .title = title, .icon = MessageIcon::Critical};
}

class GpibLinkTest : public ::testing::Test {
 protected:
  GpibLinkTest() {
    bench.Connect(kLinkGpib);
    bench.gpib.GPIBInit();
    bench.gpibDriver.calls.clear();
  }

  LinkBench bench;
};

TEST_F(GpibLinkTest, OpensAndClearsTheDevice) {
  bench.settings.GPIB_Addr = 30;
  bench.gpib.GPIBInit();
  EXPECT_EQ(bench.gpibDriver.calls, (Calls{"ibdev 0 30 0 13 1 0", "ibclr 3"}));
  EXPECT_TRUE(bench.state.LinkOpened);
}

TEST_F(GpibLinkTest, CommandGoesOutBareAndBlocksFiveMillisecondsACharacter) {
  bench.gpib.GPIBSend(":TRIG%50");
  bench.gpib.GPIBSend("");
  EXPECT_EQ(bench.gpibDriver.calls, Calls{"ibwrt 3 :TRIG%50"});
  EXPECT_EQ(bench.clock.Now(), Milliseconds(40));
}

TEST_F(GpibLinkTest, ReplyIsWhatStandsInFrontOfTheLineEndInsideTheBuffer) {
  for (const auto& [answer, reply] : std::vector<std::pair<std::string, std::string>>{
           {"1.00V\n", "1.00V"},
           {"a\nb\n", "a"},
           {"\n", ""},
           {"1.00V", ""},
           {std::string(1023, 'x') + "\n", std::string(1023, 'x')},
           {std::string(1024, 'x') + "\n", ""}}) {
    LinkBench fresh;
    fresh.Connect(kLinkGpib);
    fresh.script.Answer(":A:?", answer);
    EXPECT_EQ(fresh.scope.AskScope(":A:?"), reply);
    EXPECT_EQ(fresh.gpibDriver.calls.back(), "ibrd 0 1024");
  }
}

struct FailureRow {
  const char* name;
  std::vector<std::tuple<const char*, int, int>> fails;  // call, ibsta, iberr
  bool connects;                                         // else asks, with the device at hand
  std::vector<Message> messages;
  Calls calls;
  int time;
};

const FailureRow kFailures[] = {
    {"does not open",
     {{"ibdev", 0x8000, 0}},
     true,
     {Critical("GPIB Init", "Unable to open GPIB IO device\ribsta = &H8000\riberr = 0")},
     {"ibdev 0 7 0 13 1 0"},
     0},
    {"does not clear and goes offline",
     {{"ibclr", 0x8100, 2}},
     true,
     {Critical("Error", "Unable to clear device\ribsta = &H8100\riberr = 2 <ENOL>")},
     {"ibdev 0 7 0 13 1 0", "ibclr 3", "ibonl 3 0"},
     0},
    {"silence of ten seconds",
     {},
     false,
     {Critical("Error", "Unable to read from device\ribsta = &HC000\riberr = 6 <EABO>")},
     {"ibwrt 3 :A:?", "ibrd 3 1024", "ibonl 3 0"},
     10020},
    {"dead at the write and at the read",
     {{"ibwrt", 0x8100, 9}, {"ibrd", 0x1F100, 21}},
     false,
     {Critical("Error", "Unable to write to device\ribsta = &H8100\riberr = 9 <>"),
      Critical("Error", "Unable to read from device\ribsta = &HF100\riberr = 21 <>")},
     {"ibwrt 3 :A:?", "ibonl 3 0", "ibrd 3 1024", "ibonl 3 0"},
     20},
};

TEST_F(GpibLinkTest, EachFailureIsToldAndOnlyAFailedStartEndsTheConnection) {
  for (const FailureRow& row : kFailures) {
    SCOPED_TRACE(row.name);
    LinkBench fresh;
    fresh.Connect(kLinkGpib);
    fresh.gpib.GPIBInit();
    fresh.gpibDriver.calls.clear();
    for (const auto& [call, ibsta, iberr] : row.fails) fresh.gpibDriver.Fail(call, ibsta, iberr);
    if (row.connects) {
      fresh.scope.ConnectScope();
    } else {
      EXPECT_EQ(fresh.scope.AskScope(":A:?"), "");
    }
    EXPECT_EQ(fresh.prompts.shown, row.messages);
    EXPECT_EQ(fresh.gpibDriver.calls, row.calls);
    EXPECT_EQ(fresh.clock.Now(), Milliseconds(row.time));
    EXPECT_EQ(fresh.state.LinkOpened, !row.connects);
    EXPECT_EQ(fresh.state.ScopeConnected, !row.connects);
  }
}

TEST_F(GpibLinkTest, CloseAtTheBoxOfAFailedWriteReadsNoMore) {
  bench.gpibDriver.Fail("ibwrt", 0x8100, 0);
  bench.prompts.AnswerNext(MessageAnswer::Ok, Milliseconds(1000));
  bench.clock.UserAfter(Milliseconds(500), [&] { bench.waiting.BeginClosing(); });
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
  EXPECT_EQ(bench.gpibDriver.calls, (Calls{"ibwrt 3 :A:?", "ibonl 3 0"}));
}

TEST_F(GpibLinkTest, ReadInPiecesKeepsOldBytesAndTellsTheEnd) {
  bench.script.Answer(":DATA:CHANNEL1", "abcdef");
  bench.scope.SendToScope(":DATA:CHANNEL1");
  std::string buffer(4, '-');
  bench.gpib.Read(buffer);
  EXPECT_EQ(buffer, "abcd");
  EXPECT_FALSE(bench.gpib.Ended());
  bench.gpib.Read(buffer);
  EXPECT_EQ(buffer, "efcd");
  EXPECT_TRUE(bench.gpib.Ended());
  EXPECT_FALSE(bench.gpib.Failed());
}

}  // namespace
}  // namespace oriolemark

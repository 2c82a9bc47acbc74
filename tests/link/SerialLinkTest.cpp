#include <gtest/gtest.h>

#include "support/LinkBench.h"

namespace oriolemark {
namespace {

Message Failure(const char* text, const char* title) {
  return {.systemText = text, .title = title, .icon = MessageIcon::Exclamation};
}

class SerialLinkTest : public ::testing::Test {
 protected:
  SerialLinkTest() { bench.Connect(kLinkRS232); }

  LinkBench bench;
};

TEST_F(SerialLinkTest, ReopensThePortWithTheChosenSettings) {
  bench.settings.BaudRate = " 19200 ";
  bench.settings.COM_Port = 2;
  bench.rs232.RS232Init();
  EXPECT_EQ(bench.port.closes, 1);
  EXPECT_TRUE(bench.port.open);
  EXPECT_EQ(bench.port.settings, "19200,n,8,1");
  EXPECT_EQ(bench.port.number, 2);
}

TEST_F(SerialLinkTest, PortThatDoesNotOpenIsToldOnceAndLeavesNoConnection) {
  bench.port.fails = "Permission denied";
  bench.scope.ConnectScope();
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{Failure("Permission denied", "RS232 Init")});
  EXPECT_FALSE(bench.state.LinkOpened || bench.state.ScopeConnected);
  EXPECT_EQ(bench.indicator, std::vector<bool>{false});
  EXPECT_EQ(bench.port.written, "");
}

TEST_F(SerialLinkTest, SendBlocksForTheTimeOnTheLine) {
  const std::tuple<const char*, std::size_t, int> paces[] = {
      {"9600", 0, 3},     {"9600", 3, 12},   {"9600", 15, 50}, {"10000", 9, 30},
      {"115200", 9, 30},  {"300", 20, 2100}, {"", 9, 30},      {"fast", 9, 30},
      {"0", 9, 30},       {"-9600", 9, 30},  {"9600x", 9, 30}, {"1e-300", 9, 10000},
      {"300", 200, 10000}};
  for (const auto& [baud, length, milliseconds] : paces) {
    const Milliseconds begin = bench.clock.Now();
    bench.settings.BaudRate = baud;
    bench.port.written.clear();
    bench.rs232.RS232Send(std::string(length, 'x'));
    EXPECT_EQ(bench.port.written, std::string(length, 'x') + "\r");
    EXPECT_EQ(bench.clock.Now() - begin, Milliseconds(milliseconds)) << baud;
  }
}

TEST_F(SerialLinkTest, ReplyEndsAtItsFirstLineEndAndWhatFollowsIsAppendedToTheCutOne) {
  bench.script.Answer(":A:?", "1.5\n2");
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "1.5");
  EXPECT_EQ(bench.state.RxLength, 5);
  EXPECT_FALSE(bench.state.ReplyPending || bench.state.CommBusy);
  bench.rs232.RS232OnReceive("3");
  EXPECT_EQ(bench.state.RxBuffer, "1.53");
}

TEST_F(SerialLinkTest, SlowReplyIsNotCutOffWhileBytesKeepComing) {
  for (int chunk = 1; chunk <= 10; ++chunk) bench.port.ArriveAfter(Milliseconds(1800 * chunk), "x");
  bench.port.ArriveAfter(Milliseconds(19000), "y\n");
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "xxxxxxxxxxy");
}

TEST_F(SerialLinkTest, ReplyWithoutLineEndIsGivenUpAfterTwoSecondsAndThrownAwayByTheNextSend) {
  bench.script.Answer(":A:?", "1.5");
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
  EXPECT_EQ(bench.clock.Now(), Milliseconds(2000));
  EXPECT_EQ(bench.state.RxBuffer, "1.5");
  EXPECT_TRUE(bench.state.ReplyPending);
  EXPECT_TRUE(bench.prompts.shown.empty());
  bench.script.Answer(":B:?", "2\n");
  EXPECT_EQ(bench.scope.AskScope(":B:?"), "2");
}

TEST_F(SerialLinkTest, InnerRequestTakesTheOutersReply) {
  bench.script.Answer(":OUTER:?", "1\n", Milliseconds(500));
  bench.script.Answer(":INNER:?", "2\n", Milliseconds(700));
  std::string inner;
  bench.clock.UserAfter(Milliseconds(100), [&] { inner = bench.scope.AskScope(":INNER:?"); });
  EXPECT_EQ(bench.scope.AskScope(":OUTER:?"), "1");
  EXPECT_EQ(inner, "1");
}

TEST_F(SerialLinkTest, ReplyThatGrewOldInsideANestedHandlerIsSilence) {
  bench.script.Answer(":A:?", "1\n", Milliseconds(50));
  bench.clock.UserAfter(Milliseconds(30), [&] {
    bench.prompts.AnswerNext(MessageAnswer::Ok, Milliseconds(2500));
    bench.prompts.Show({.text = "anything"});
  });
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
  EXPECT_FALSE(bench.state.ReplyPending);
}

TEST_F(SerialLinkTest, NotedTextIsShownAgainAtEachEventAndAnEventHidesErrors) {
  std::vector<std::string> status;
  bench.serialEvents.showStatus = [&](const std::string& text) { status.push_back(text); };
  bench.port.ArriveAfter(Milliseconds(1), "a");
  bench.clock.Run(Milliseconds(2));
  EXPECT_TRUE(status.empty());
  for (const int code : {1005, 1009, 1, 3, 1001}) bench.port.Raise(code);
  bench.port.ArriveAfter(Milliseconds(1), "b\n");
  bench.clock.Run(Milliseconds(2));
  EXPECT_EQ(status, (std::vector<std::string>{
                        "Status: Unknown error or event", "Status: Parity Error",
                        "Status: Parity Error", "Status: Change in CTS Detected",
                        "Status: Change in CTS Detected", "Status: Change in CTS Detected"}));
  EXPECT_EQ(bench.state.RxBuffer, "ab");
}

}  // namespace
}  // namespace oriolemark

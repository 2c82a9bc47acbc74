#include <gtest/gtest.h>

#include "support/LinkBench.h"

namespace oriolemark {
namespace {

Message Complaint(const std::string& title) {
  return Warning("Can't Connect to USB Device", title);
}

class UsbLinkTest : public ::testing::Test {
 protected:
  UsbLinkTest() { bench.Connect(kLinkUsb); }

  LinkBench bench;
};

TEST_F(UsbLinkTest, FirstContactThatFailsLeavesNoConnection) {
  bench.usbDriver.countsLeft = 0;
  bench.scope.ConnectScope();
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{Complaint("USB Init")});
  EXPECT_FALSE(bench.state.LinkOpened || bench.state.ScopeConnected);
  EXPECT_EQ(bench.usbDriver.written, "");
}

TEST_F(UsbLinkTest, ReplyIsOneBlockUpToItsLineEndAndTheRestIsTakenForTheNext) {
  const std::pair<std::string, std::string> rows[] = {
      {"1.5\n", "1.5"},
      {"1.5", "1.5"},
      {"\nx", ""},
      {"a\nb\n", "a"},
      {std::string("\xFF\0\n", 3), std::string("\xFF\0", 2)},
  };
  for (const auto& [block, reply] : rows) {
    bench.script.Answer(":A:?", block);
    EXPECT_EQ(bench.scope.AskScope(":A:?"), reply);
    bench.usbDriver.Offer(block);
    EXPECT_EQ(bench.usb.USBReadBlock(), block);
  }
  bench.script.Answer(":A:?", std::string(255, 'x') + "yz\n");
  EXPECT_EQ(bench.scope.AskScope(":A:?"), std::string(255, 'x'));
  EXPECT_EQ(bench.usb.USBRead(), "yz");
  EXPECT_TRUE(bench.prompts.shown.empty());
}

TEST_F(UsbLinkTest, SilenceEndsAReadByTheDriverAndABlockReadByItsFiftyTicks) {
  EXPECT_EQ(bench.usb.USBReadBlock(), "");
  EXPECT_NEAR(static_cast<double>(bench.clock.Now().count()), 5000, 5);
  bench.usbDriver.Offer("a");
  EXPECT_EQ(bench.usb.USBRead(), "a");
  EXPECT_EQ(bench.usb.USBRead(), "");
  EXPECT_EQ(bench.prompts.shown,
            (std::vector<Message>{Warning("Read USB time out", "USB Read Message"),
                                  Complaint("USB Read Message")}));
}

TEST_F(UsbLinkTest, UnpluggedInstrumentIsToldAtTheQuestionAndAtTheReply) {
  bench.usbDriver.writesLeft = 2;
  bench.usbDriver.countsLeft = 0;
  EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
  EXPECT_EQ(bench.usbDriver.written, ":A") << "the first byte that fails is the last";
  EXPECT_EQ(bench.prompts.shown,
            (std::vector<Message>{Complaint("USB Send Message"), Complaint("USB Read Message")}));
  bench.usbDriver.countsLeft = FakeUsb::kAll;
  bench.usbDriver.fetchesLeft = 0;
  bench.usbDriver.Offer("1\n");
  EXPECT_EQ(bench.usb.USBReadBlock(), "");
  EXPECT_EQ(bench.prompts.shown.back(), Complaint("USB Read Message"));
  EXPECT_TRUE(bench.state.ScopeConnected);
}

TEST_F(UsbLinkTest, CloseDuringABlockReadEndsItSilently) {
  bench.clock.UserAfter(Milliseconds(700), [&] { bench.waiting.BeginClosing(); });
  EXPECT_EQ(bench.usb.USBReadBlock(), "");
  EXPECT_LE(bench.clock.Now(), Milliseconds(710));
  EXPECT_EQ(bench.usb.USBRead(), "");
  EXPECT_TRUE(bench.prompts.shown.empty());
}

TEST_F(UsbLinkTest, ScreenIsSelectedCountedAddressedAndReadUntilOneFails) {
  const std::vector<std::string> transfers{"control 2 8 0 80", "control 2 9 11264 1",
                                           "control 2 7 16 9", "bulk 2 76800"};
  bench.settings.UsbDevice = 2;
  bench.usbDriver.screen = "abc";
  for (std::size_t succeed = 0; succeed <= transfers.size(); ++succeed) {
    std::vector<std::uint8_t> buffer(76801 + 16, '-');
    bench.usbDriver.transfers.clear();
    bench.usbDriver.transfersLeft = static_cast<int>(succeed);
    bench.usb.USBReadScreen(16, buffer, 76800);
    const auto asked = std::min(succeed + 1, transfers.size());
    EXPECT_EQ(bench.usbDriver.transfers,
              std::vector<std::string>(transfers.begin(), transfers.begin() + asked));
    EXPECT_EQ(std::string(buffer.begin() + 15, buffer.begin() + 20),
              succeed == transfers.size() ? "-abc-" : "-----");
  }
  EXPECT_TRUE(bench.prompts.shown.empty());
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "support/LinkBench.h"

namespace oriolemark {
namespace {

struct TransportsTest : ::testing::Test, LinkBench {
  TransportsTest() { Connect(kLinkRS232); }
  // In the boxes since the last call.
  void ExpectShown(const std::vector<Message>& messages) {
    EXPECT_EQ(std::exchange(prompts.shown, {}), messages);
  }
};

Message NoDevice(const std::string& title) {
  return Warning("Can't Connect to USB Device", title);
}

TEST_F(TransportsTest, SerialOrUsbConnectThatFailsIsToldOnceAndLeavesNoConnection) {
  port.fails = "Permission denied";
  usbDriver.operationsLeft = 0;
  for (const int ioType : {kLinkRS232, kLinkUsb}) {
    Connect(ioType);
    scope.ConnectScope();
    EXPECT_EQ(Bits(state.LinkOpened, state.ScopeConnected, indicator.back()), "000");
  }
  Message denied = Warning("", "RS232 Init");
  denied.systemText = port.fails;
  ExpectShown({denied, NoDevice("USB Init")});
  EXPECT_EQ(port.written + usbDriver.written, "");
}

TEST_F(TransportsTest, GpibDeviceThatDoesNotOpenOrClearIsToldAndLeavesNoConnection) {
  Connect(kLinkGpib);
  settings.GPIB_Addr = 30;
  gpibDriver.failures["ibclr"] = {.ibsta = 0x8100, .iberr = 2};
  scope.ConnectScope();
  EXPECT_EQ(Bits(state.LinkOpened, state.ScopeConnected), "00");
  gpibDriver.failures["ibdev"] = {.ibsta = 0x8000};
  scope.ConnectScope();
  EXPECT_EQ(gpibDriver.calls, "ibdev 0 30 0 13 1 0; ibclr 3; ibonl 3 0; ibdev 0 30 0 13 1 0; ");
  ExpectShown({Critical("Unable to clear device\ribsta = &H8100\riberr = 2 <ENOL>", "Error"),
               Critical("Unable to open GPIB IO device\ribsta = &H8000\riberr = 0", "GPIB Init")});
}

TEST_F(TransportsTest, GpibDeviceThatIsSilentOrDeadIsToldAtEachCallAndStaysConnected) {
  Connect(kLinkGpib);
  gpib.GPIBInit();
  gpib.GPIBSend("");
  EXPECT_EQ(scope.AskScope(":A:?"), "");
  EXPECT_EQ(clock.Now(), Milliseconds(10020));
  EXPECT_TRUE(gpibDriver.calls.ends_with(" ibclr 3; ibwrt 3 :A:?; ibrd 3 1024; ibonl 3 0; "));
  gpibDriver.calls.clear();
  gpibDriver.failures["ibwrt"] = {.ibsta = 0x8100, .iberr = 9};
  gpibDriver.failures["ibrd"] = {.ibsta = 0x1F100, .iberr = 21};
  EXPECT_EQ(scope.AskScope(":A:?"), "");
  EXPECT_EQ(clock.Now(), Milliseconds(10040));
  EXPECT_EQ(gpibDriver.calls, "ibwrt 3 :A:?; ibonl 3 0; ibrd 3 1024; ibonl 3 0; ");
  ExpectShown({Critical("Unable to read from device\ribsta = &HC000\riberr = 6 <EABO>", "Error"),
               Critical("Unable to write to device\ribsta = &H8100\riberr = 9 <>", "Error"),
               Critical("Unable to read from device\ribsta = &HF100\riberr = 21 <>", "Error")});
  EXPECT_TRUE(state.ScopeConnected);
}

TEST_F(TransportsTest, UsbInstrumentThatIsSilentOrUnpluggedIsToldAtEachStepAndStaysConnected) {
  Connect(kLinkUsb);
  EXPECT_EQ(scope.AskScope(":A:?"), "");
  ExpectShown({NoDevice("USB Read Message")});
  usbDriver.operationsLeft = 2;
  EXPECT_EQ(scope.AskScope(":B:?"), "");
  EXPECT_EQ(usbDriver.written, ":A:?\r:B") << "the first byte that fails is the last";
  ExpectShown({NoDevice("USB Send Message"), NoDevice("USB Read Message")});
  EXPECT_TRUE(state.ScopeConnected);
}

TEST(Transports, ReplyIsWhatStandsInFrontOfItsFirstLineEnd) {
  const std::tuple<int, std::string, std::string> rows[] = {
      {kLinkGpib, "a\nb\n", "a"},
      {kLinkGpib, "\n", ""},
      {kLinkGpib, "1.00V", ""},
      {kLinkUsb, "1.5", "1.5"},
      {kLinkUsb, "\nx", ""},
      {kLinkUsb, "a\nb\n", "a"},
      {kLinkUsb, std::string("\xFF\0\n", 3), std::string("\xFF\0", 2)},
  };
  for (const auto& [ioType, answer, reply] : rows) {
    LinkBench bench;
    bench.Connect(ioType);
    bench.script.Answer(":A:?", answer);
    EXPECT_EQ(bench.scope.AskScope(":A:?"), reply);
    EXPECT_TRUE(bench.prompts.shown.empty());
    if (ioType != kLinkUsb) continue;
    bench.usbDriver.Offer(answer);
    EXPECT_EQ(bench.usb.USBReadBlock(), answer);
  }
}

TEST_F(TransportsTest, SerialSendBlocksForTheTimeOnTheLine) {
  // The rate, the characters, and the milliseconds.
  for (const auto& row : Rows(R"(
9600 | 0 | 3 || 9600 | 3 | 12 || 9600 | 15 | 50 || 10000 | 9 | 30 || 115200 | 9 | 30
300 | 20 | 2100 || 300 | 200 | 10000 || - | 9 | 30 || fast | 9 | 30 || 0 | 9 | 30
-9600 | 9 | 30 || 9600x | 9 | 30 || 1e-300 | 9 | 10000
)")) {
    const Milliseconds begin = clock.Now();
    const std::string text(std::stoul(row[1]), 'x');
    settings.BaudRate = row[0];
    rs232.RS232Send(text);
    EXPECT_EQ(std::exchange(port.written, {}), text + "\r");
    EXPECT_EQ(clock.Now() - begin, Milliseconds(std::stol(row[2]))) << row[0];
  }
}

TEST_F(TransportsTest, SerialReplyIsCutAtItsLineEndAndGoesToTheInnerRequestAndTheOuter) {
  script.Answer(":A:?", "1.5\n2");
  EXPECT_EQ(scope.AskScope(":A:?"), "1.5");
  EXPECT_EQ(state.RxLength, 5);
  EXPECT_EQ(Bits(state.ReplyPending, state.CommBusy), "00");
  rs232.RS232OnReceive("3");
  EXPECT_EQ(state.RxBuffer, "1.53");
  script.Answer(":OUTER:?", "1\n", Milliseconds(500));
  script.Answer(":INNER:?", "2\n", Milliseconds(700));
  clock.UserAfter(Milliseconds(100), [&] { EXPECT_EQ(scope.AskScope(":INNER:?"), "1"); });
  EXPECT_EQ(scope.AskScope(":OUTER:?"), "1");
  EXPECT_EQ(script.sent.size(), 3u);
}

TEST_F(TransportsTest, SerialEventTextIsShownAgainAtEachEventAndHidesErrors) {
  std::vector<std::string> status;
  serialEvents.showStatus = [&](const std::string& text) { status.push_back(text); };
  constexpr int kReceive = serial_event::kReceive;
  for (const int code : {kReceive, 1005, 1009, 1, 3, 1001, kReceive}) port.onEvent(code);
  const std::string parity = "Status: Parity Error";
  const std::string cts = "Status: Change in CTS Detected";
  EXPECT_EQ(status, (std::vector<std::string>{"Status: Unknown error or event", parity, parity, cts,
                                              cts, cts}));
}

TEST_F(TransportsTest, UsbBlockReadEndsAfterFiftyTicksOrByTheClose) {
  EXPECT_EQ(usb.USBReadBlock(), "");
  EXPECT_NEAR(static_cast<double>(clock.Now().count()), 5000, 5);
  ExpectShown({Warning("Read USB time out", "USB Read Message")});
  clock.UserAfter(Milliseconds(700), [&] { waiting.BeginClosing(); });
  EXPECT_EQ(usb.USBReadBlock(), "");
  EXPECT_EQ(usb.USBRead(), "");
  EXPECT_LE(clock.Now(), Milliseconds(5715));
  ExpectShown({});
}

TEST(Transports, ClosingProgramAsksNothingButStillSends) {
  for (const int ioType : {kLinkUsb, kLinkGpib, kLinkRS232}) {
    LinkBench bench;
    bench.Connect(ioType);
    // A send that failed while the program ran is no reason to spare the last one.
    bench.usbDriver.operationsLeft = 0;
    bench.gpibDriver.failures["ibwrt"] = {.ibsta = kGpibErr};
    if (ioType != kLinkRS232) bench.scope.SendToScope(":A");
    bench.usbDriver.operationsLeft = 100;
    bench.gpibDriver.failures.clear();
    const Milliseconds begin = bench.clock.Now();
    bench.waiting.BeginClosing();
    EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
    bench.scope.SendToScope(":KEY:LOCK:ENABLE");
    EXPECT_EQ(bench.script.sent, std::vector<std::string>{":KEY:LOCK:ENABLE"}) << ioType;
    EXPECT_EQ(bench.clock.Now(), begin) << ioType;
  }
}

TEST(Handshake, OnlyAKnownInstrumentWithNewEnoughFirmwareIsConnected) {
  // The identity, how often it is asked for, the version, the message of a refusal ("not found" or
  // the version shown), and the model known from before. An identity without a model keeps and
  // judges that one. The version may be in the place of the number.
  for (const auto& row : Rows(R"(
TAVIK ELECTRONIC,TX-5000CA,SN,01.01.33 | 1 | 10133 | - | -
TAVIK TECHNOLOGIES,TX-5102,SN,02.00.00 | 1 | 20000 | - | -
TAVIK ELECTRONIC,TX-5000,SN,01.01.32 | 1 | 10132 | 01.01.32 | -
TAVIK ELECTRONIC,TX-5000,SN,ab.cd.ef | 1 | 0 | ab.cd.ef | -
TAVIK ELECTRONIC,TX-5000,03.01.15 | 1 | 30115 | - | -
TAVIK ELECTRONIC,TX-5000 | 1 | 0 | not found | -
TAVIK ELECTRONIC,TX-5 | 1 | - | TX-5 | TX-5000CA
TAVIK ELECTRONIC,XY1102,SN,01.01.33 | 3 | 0 | not found | -
Tavik Electronic,TX-5000,SN,01.01.33 | 3 | 0 | not found | -
- | 3 | 0 | not found | -
)")) {
    const std::string &identity = row[0], &told = row[3], &model = row[4];
    SCOPED_TRACE(identity);
    LinkBench bench;
    bench.settings = {.ScopeIOType = kLinkRS232, .COM_Port = 2, .BaudRate = " 19200 "};
    bench.state.ScopeConnected = true;
    bench.state.ScopeModel = model;
    bench.port.open = true;
    std::vector<std::string> sent{":DISPLAY:MENU STATUS:OFF", ":KEY:LOCK:ENABLE"};
    for (int ask = 0; ask < std::stoi(row[1]); ++ask) {
      sent.push_back("*IDN?");
      bench.script.Answer("*IDN?", identity.empty() ? "" : identity + "\n");
    }
    bench.scope.ConnectScope();
    EXPECT_EQ(bench.port.settings + " at " + std::to_string(bench.port.number), "19200,n,8,1 at 2");
    const bool passes = told.empty();
    EXPECT_EQ(bench.state.ScopeConnected, passes);
    Message refusal =
        Warning("The version of the DSO must be higher than 01.01.33\rCurrent Version is " + told +
                "\rPlease contact TAVIK at www.tavik.example");
    if (told == "not found") refusal = Warning("Device not found", "Connect to Oscilloscope");
    EXPECT_EQ(bench.prompts.shown, std::vector<Message>(!passes, refusal));
    EXPECT_TRUE(model.empty() ? bench.state.ScopeVersionNum == std::stoi(row[2])
                              : bench.state.ScopeModel == model);
    if (identity.empty()) {
      EXPECT_EQ(bench.clock.Now(), Milliseconds(6050)) << "three silences of two seconds";
    }
    bench.scope.DisconnectScope();
    if (passes) sent.push_back(":KEY:LOCK:ENABLE");
    EXPECT_EQ(bench.script.sent, sent) << "only a connected instrument is released";
    EXPECT_EQ(bench.indicator, (std::vector<bool>{passes, false}));
    EXPECT_EQ(Bits(bench.state.LinkOpened, bench.state.ScopeConnected), "10");
  }
}

TEST(Handshake, ColourIsTheLetterBehindTheFourDigits) {
  LinkBench bench;
  EXPECT_FALSE(bench.scope.IsColorScope());
  EXPECT_TRUE(bench.script.sent.empty()) << "a closed link is not asked";
  bench.Connect(kLinkGpib);
  for (const auto& row :
       Rows("any,TX-5000C | 1 || TX-5000C | 1 || TAVIK ELECTRONIC,TX-5000A,C,01 | 0 || - | 0")) {
    bench.script.Answer("*IDN?", row[0] + "\n");
    EXPECT_EQ(Bits(bench.scope.IsColorScope()), row[1]) << row[0];
  }
}

}  // namespace
}  // namespace oriolemark

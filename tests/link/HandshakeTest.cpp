#include <gtest/gtest.h>

#include "support/LinkBench.h"

namespace oriolemark {
namespace {

const std::string kColour = "TAVIK ELECTRONIC,TX-5000CA,SN,01.01.33";

const Message kNotFound = Warning("Device not found", "Connect to Oscilloscope");

Message TooOld(const std::string& version) {
  return Warning("The version of the DSO must be higher than 01.01.33\rCurrent Version is " +
                 version + "\rPlease contact TAVIK at www.tavik.example");
}

struct HandshakeRow {
  std::string identity;
  bool passes;
  int asks;
  std::vector<Message> messages;
  int version = 0;
  std::string model = {};  // known from before, and kept
};

const std::vector<HandshakeRow> kHandshakes = {
    {kColour, true, 1, {}, 10133},
    {"TAVIK TECHNOLOGIES,TX-5102,SN,02.00.00", true, 1, {}, 20000},
    {"TAVIK ELECTRONIC,TX-5000,SN,01.01.32", false, 1, {TooOld("01.01.32")}, 10132},
    {"TAVIK ELECTRONIC,TX-5000,SN,ab.cd.ef", false, 1, {TooOld("ab.cd.ef")}, 0},
    {"TAVIK ELECTRONIC,TX-5000,SN,", false, 1, {TooOld("")}, 0},
    // The last cut finds no comma and leaves the version where it is.
    {"TAVIK ELECTRONIC,TX-5000,03.01.15", true, 1, {}, 30115},
    // No model of its own: the one known before is judged.
    {"TAVIK ELECTRONIC,TX-5000", false, 1, {kNotFound}},
    {"TAVIK ELECTRONIC,TX-5", false, 1, {TooOld("TX-5")}, 0, "TX-5000CA"},
    {"TAVIK ELECTRONIC,XY1102,SN,01.01.33", false, 3, {kNotFound}},
    {"TAVIK ELECTRONIC", false, 3, {kNotFound}},
    {"Tavik Electronic,TX-5000,SN,01.01.33", false, 3, {kNotFound}},
    {"", false, 3, {kNotFound}},
};

TEST(HandshakeTest, OnlyAKnownInstrumentWithNewEnoughFirmwareIsConnected) {
  for (const HandshakeRow& row : kHandshakes) {
    SCOPED_TRACE(row.identity);
    LinkBench bench;
    bench.settings.ScopeIOType = kLinkRS232;
    bench.state.ScopeConnected = true;
    bench.state.ScopeModel = row.model;
    std::vector<std::string> sent{":DISPLAY:MENU STATUS:OFF", ":KEY:LOCK:ENABLE"};
    for (int ask = 0; ask < row.asks; ++ask) {
      bench.script.Answer("*IDN?", row.identity.empty() ? "" : row.identity + "\n");
      sent.push_back("*IDN?");
    }
    bench.scope.ConnectScope();
    EXPECT_EQ(bench.state.ScopeConnected, row.passes);
    EXPECT_EQ(bench.indicator, std::vector<bool>{row.passes});
    EXPECT_TRUE(bench.state.LinkOpened);
    EXPECT_EQ(bench.prompts.shown, row.messages);
    EXPECT_EQ(bench.script.sent, sent);
    EXPECT_TRUE(row.model.empty() ? bench.state.ScopeVersionNum == row.version
                                  : bench.state.ScopeModel == row.model);
    if (row.identity.empty()) {
      EXPECT_EQ(bench.clock.Now(), Milliseconds(6050)) << "three silences of two seconds";
    }
  }
}

TEST(HandshakeTest, DisconnectReleasesAConnectedInstrumentOnlyAndPutsTheIndicatorOut) {
  LinkBench bench;
  bench.Connect(kLinkGpib);
  bench.scope.DisconnectScope();
  bench.scope.DisconnectScope();
  EXPECT_EQ(bench.script.sent, std::vector<std::string>{":KEY:LOCK:ENABLE"});
  EXPECT_EQ(bench.indicator, (std::vector<bool>{false, false}));
  EXPECT_TRUE(bench.state.LinkOpened);
}

TEST(HandshakeTest, ColourIsTheLetterBehindTheFourDigits) {
  const std::pair<std::string, bool> rows[] = {
      {"any,TX-5000C", true},
      {"TX-5000C", true},
      {"TAVIK ELECTRONIC,TX-5000A,C,01.01.33", false},
      {"TAVIK ELECTRONIC,TX-500", false},
      {"", false},
  };
  for (const auto& [identity, colour] : rows) {
    LinkBench bench;
    bench.Connect(kLinkGpib);
    bench.script.Answer("*IDN?", identity + "\n");
    EXPECT_EQ(bench.scope.IsColorScope(), colour) << identity;
  }
  LinkBench closed;
  EXPECT_FALSE(closed.scope.IsColorScope());
  EXPECT_TRUE(closed.script.sent.empty());
}

TEST(HandshakeTest, ClosingAsksNothingButStillSends) {
  for (const int ioType : {kLinkUsb, kLinkGpib, kLinkRS232}) {
    LinkBench bench;
    bench.Connect(ioType);
    bench.script.Answer(":A:?", "1\n");
    bench.waiting.BeginClosing();
    EXPECT_EQ(bench.scope.AskScope(":A:?"), "");
    bench.scope.SendToScope(":KEY:LOCK:ENABLE");
    EXPECT_EQ(bench.script.sent, std::vector<std::string>{":KEY:LOCK:ENABLE"}) << ioType;
    EXPECT_EQ(bench.clock.Now(), Milliseconds(0)) << ioType;
  }
}

}  // namespace
}  // namespace oriolemark

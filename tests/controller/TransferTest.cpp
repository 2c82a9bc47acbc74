#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

// One command of a transfer, the steps of the bar behind it, and the value where it is not that of
// the setting's own number.
struct Exchange {
  std::size_t setting;
  int steps = 1;
  const char* value = nullptr;
};
const std::vector<Exchange> kWritten = {
    {0, 1, "v1"}, {21}, {16, 4}, {17},           {18, 3}, {2, 1, "ON"}, {7},           {3},
    {4},          {5},  {6},     {8, 1, "OFF"},  {2},     {9, 1, "ON"}, {14, 1, "v7"}, {10},
    {11},         {12}, {13},    {15, 1, "OFF"}, {9},     {22},         {29},          {30},
    {32, 0},      {31}, {27, 0}, {28, 0},        {24},    {23},         {25},          {26},
    {33},         {34}, {38},    {37},           {35},    {36},         {39},          {40},
    {41}};
const std::vector<Exchange> kRead = {
    {1},  {2},  {3},     {4},     {5},     {6},  {7},  {8},  {9},  {10}, {11}, {12}, {13}, {14},
    {15}, {16}, {17},    {18, 2}, {19, 2}, {21}, {22}, {24}, {23}, {25}, {26}, {29}, {30}, {32, 0},
    {31}, {33}, {27, 0}, {28, 0}, {34},    {38}, {37}, {35}, {36}, {39}, {40}, {41}};
const std::string kStatus = ":TRIGGER:STATUS:?";

struct SettingsBench : ControllerBench {
  SettingsBench() {
    Connect();
    module.progress.ProgressBar1.onRefresh = [this] {
      const auto commands = std::ranges::count(port.written, '\r');
      if (commands > 1) steps.emplace_back(commands - 1, module.progress.ProgressBar1.Value());
    };
  }
  // After so many commands of its own the bar had been raised once more, to this.
  std::vector<std::pair<long, double>> steps;

  // The bar stands still when the next step would leave it.
  void ExpectSteps(const std::vector<Exchange>& exchanges, double step) const {
    std::vector<std::pair<long, double>> expected;
    double value = 0;
    for (std::size_t i = 0; i < exchanges.size(); ++i) {
      for (int left = exchanges[i].steps; left > 0; --left) {
        if (value + step <= 100) value += step;
        expected.emplace_back(i + 1, value);
      }
    }
    EXPECT_EQ(steps, expected);
  }
};

TEST(SettingsTransfer, UploadSendsEverySettingInOrderWhateverTheMethod) {
  SettingsBench bench;
  bench.settings = Numbered("v");
  std::string expected = kStatus;
  for (const auto& [setting, steps, value] : kWritten) {
    expected += ";" + kHeads[setting][0];
    expected += value != nullptr ? value : "v" + std::to_string(setting);
  }
  bench.controller.cmdUpload.Click();
  EXPECT_EQ(bench.Sent(), expected);
  bench.ExpectSteps(kWritten, 100.0 / 43);
  EXPECT_EQ(bench.settings.CH1Invert + bench.settings.CH2Invert + bench.settings.MemOffset,
            "OFFOFFOFF");
  EXPECT_FALSE(bench.document.CtrlChanged);
  bench.ExpectRest();
}

TEST(SettingsTransfer, DownloadStoresEachReplyAndDropsBlanksOnlyWhereTold) {
  for (const std::string status : {"STOP", "STOP ", "stop", "RUN", "silence"}) {
    SettingsBench bench;
    const bool silent = status == "silence";
    CtrlSettings expected = Numbered(" a b");
    Set(expected, "3=ab3;10=ab10;37=ab37");
    std::string asked = kStatus;
    bench.AnswerNumbered(" a b");
    for (const Exchange& exchange : kRead) {
      asked += ";" + kHeads[exchange.setting][0] + "?";
      if (silent) (expected.*kRecord[exchange.setting - 1]).clear();
    }
    bench.port.lies[kStatus] = status + "\n";
    if (silent) bench.port.side.GetFaults().Add(*tx5000::ParseFault("silence"));
    expected.RunStop = status == "STOP" ? "STOP" : "RUN";
    Set(expected, "8=OFF;15=OFF;20=OFF");
    bench.controller.cmdDownload.Click();
    EXPECT_EQ(bench.Sent(), asked);
    EXPECT_EQ(Listed(bench.settings), Listed(expected)) << status;
    bench.ExpectSteps(kRead, 100.0 / 36);
    EXPECT_TRUE(bench.document.CtrlChanged && bench.prompts.shown.empty());
    EXPECT_EQ(bench.Joined("Trigger"),
              silent ? "Method [], Source []" : "Method [ a b22], Source [ a b24]");
    bench.ExpectRest();
  }
}

TEST(SettingsTransfer, AutoSetBlocksFourSecondsUnderTheHourglassAndReadsEverything) {
  SettingsBench bench;
  Milliseconds busy{0}, loaded{0}, ready{0};
  bench.module.pointer.onChanged = [&] {
    (bench.module.pointer.Shape() == PointerShape::Hourglass ? busy : ready) = bench.clock.Now();
  };
  bench.module.progress.onChanged = [&] {
    if (loaded == Milliseconds(0)) loaded = bench.clock.Now();
  };
  bench.DoubleClick(bench.Node("Running Control", "Auto Set"));
  EXPECT_EQ(loaded - busy, Milliseconds(4000));
  EXPECT_GT(ready, loaded);
  const std::string sent = bench.Sent();
  EXPECT_TRUE(sent.starts_with(":AUTO;" + kStatus + ";" + kStatus + ";:CHANNEL1:DISPLAY:?;"));
  EXPECT_EQ(std::ranges::count(sent, ';'), 41);
  EXPECT_TRUE(bench.document.CtrlChanged);
}

// What differs from a new document, by numbers of the record.
const char* const kDocuments = R"(
EDGE | 1=STOP;2=OFF;3=20.0V;4=-12.00div;5=DC;6=ON;7=10X;10=20.0mV;14=100X;16=1.000ns;17=-14ns;18=0.5ms;21=X-Y;23=FALLING;24=AC;25=SINGLE;26=HF;33=0.04div;34=REAL_TIME;35=ENVELOPE;36=2;37=1%;38=ON;39=DOT;40=ON;41=HALF
PULSE | 9=ON;10=5.00V;11=12.00div;12=DC;13=ON;16=50.00s;17=-300s;24=EXT5;25=NORMAL;26=LF;27=-MORE THAN;28=0.0015us;35=AVERAGE;36=256;37=100%;41=NONE
VIDEO | 3=2kV;7=1000X;10=5kV;14=1000X;16=500.0us;17=1s;24=EXT;26=AC;29=NEGATIVE;30=LINE Number;31=PAL/SECAM;32=313;35=ANALOG
VIDEO | 30=EVEN FIELD;31=NTSC;32=525;24=CH2
)";

TEST(SettingsTransfer, WhatAnUploadWritesADownloadBringsBackButTwoValuesOfANewDocumentAreRefused) {
  for (const auto& row : Rows(kDocuments)) {
    SCOPED_TRACE(row[1]);
    SettingsBench bench;
    Set(bench.settings, "30=ALL LINE;31=NTSC;22=" + row[0] + ";" + row[1]);
    CtrlSettings expected = bench.settings;
    expected.CH2Probe = expected.CH1Probe;
    expected.MemOffset = "OFF";
    bench.controller.cmdUpload.Click();
    bench.settings = Numbered("v");
    bench.controller.cmdDownload.Click();
    EXPECT_EQ(Listed(bench.settings), Listed(expected));
    EXPECT_EQ(bench.instrument.Unknown(), std::vector<std::string>{});
  }
  SettingsBench bench;
  bench.controller.cmdUpload.Click();
  EXPECT_EQ(bench.instrument.Unknown(),
            (std::vector<std::string>{":TRIGGER:SYNC:LINE", ":TRIGGER:VIDEO STANDARD:"}));
}

using Bench = SettingsBench;
struct Trouble {
  const char* name;
  void (*strike)(Bench& bench);
  long extra = 0;    // commands more than the transfer has
  int failures = 0;  // at the least
};
const Trouble kTroubles[] = {
    {"the line dies", [](Bench& bench) { bench.port.fails = "Input/output error"; }, 0, 20},
    {"Upload again", [](Bench& bench) { bench.controller.cmdUpload.Click(); }},
    {"Download again", [](Bench& bench) { bench.controller.mnuDownLoad.Click(); }},
    {"the bar is closed", [](Bench& bench) { EXPECT_FALSE(bench.module.progress.Unload()); }},
    {"an edit",
     [](Bench& bench) {
       bench.Edit(bench.Node("Display", "Grid"), [&bench] { bench.Confirm("HALF"); });
       EXPECT_NE(bench.port.written.find(":DISPLAY:GRID:HALF\r"), std::string::npos);
     },
     1},
    {"New", [](Bench& bench) { bench.controller.mnuNewCtrl.Click(); }},
    {"the program is closed", [](Bench& bench) { bench.module.main.Close(); }}};

TEST(SettingsTransfer, EndsInOrderWhateverHappensMeanwhile) {
  for (const Trouble& trouble : kTroubles) {
    for (const bool upload : {true, false}) {
      SCOPED_TRACE(std::string(trouble.name) + (upload ? " in Upload" : " in Download"));
      SettingsBench bench;
      const Milliseconds begin = bench.clock.Now();
      bench.At(700, [&] {
        EXPECT_TRUE(bench.module.Transfer().TransferActive);
        EXPECT_EQ(bench.module.progress.Caption(), upload ? "Data Uploading" : "Data Downloading");
        trouble.strike(bench);
        EXPECT_FALSE(bench.document.CtrlChanged && trouble.extra == 0);
      });
      const long commands = upload ? 42 : 41;
      (upload ? bench.controller.cmdUpload : bench.controller.cmdDownload).Click();
      bench.ExpectRest();
      if (bench.waiting.Closing()) {
        EXPECT_LT(bench.clock.Now() - begin, Milliseconds(2700));
        bench.module.main.Unload();
        EXPECT_TRUE(bench.port.written.ends_with("\r:KEY:LOCK:ENABLE\r"));
        continue;
      }
      const auto failures = static_cast<long>(bench.Told().size());
      EXPECT_TRUE(failures >= trouble.failures && (trouble.failures > 0) == (failures > 0));
      EXPECT_EQ(std::ranges::count(bench.Sent(), ';') + 1 + failures, commands + trouble.extra);
      EXPECT_EQ(bench.document.CtrlChanged, !upload || trouble.extra > 0);
      bench.port.fails.clear();
      bench.controller.mnuConnect.Click();
      bench.controller.cmdDownload.Click();
      EXPECT_EQ(bench.settings.TimeDiv,
                bench.instrument.GetSettings().Text(tx5000::Setting::kTimeRange));
      bench.ExpectRest();
    }
  }
}

TEST(SettingsTransfer, AMessageThatComesAgainInOneTransferCanBeMutedUntilItsEnd) {
  SettingsBench bench;
  bench.module.browser.files.AddWaveItem();
  bench.clock.Run(Milliseconds(10));
  bench.module.preferences.refresh = {.RefreshType = "Auto", .RefreshInterval = 100};
  const Message lost{.systemText = "Input/output error",
                     .title = "RS232 Send Message",
                     .icon = MessageIcon::Exclamation};
  Message again = lost, other = lost;
  other.systemText = "Another error";
  Message otherAgain = other;
  again.mayMute = otherAgain.mayMute = true;
  for (Button* command : {&bench.controller.cmdDownload, &bench.controller.cmdDownload,
                          &bench.wave->cmdRefresh, &bench.wave->cmdRefresh}) {
    bench.settings.CH1Display = "ON";
    bench.wave->OptionCH.Select(0);
    bench.port.fails = lost.systemText;
    bench.prompts.AnswerNext(MessageAnswer::Ok);
    bench.prompts.AnswerNext(MessageAnswer::OkAndMute);
    bench.At(7000, [&] { bench.port.fails = other.systemText; });
    // A refresh of three readings; a download has ended by then.
    bench.At(60000, [&] {
      if (bench.module.Refreshing().WaveAutoRefresh) command->Click();
    });
    command->Click();
    EXPECT_EQ(std::ranges::count(bench.prompts.shown, false, &Message::mayMute), 2);
    bench.prompts.shown.resize(4);
    EXPECT_EQ(std::exchange(bench.prompts.shown, {}),
              (std::vector{lost, again, other, otherAgain}));
    bench.ExpectRest();
  }
}

}  // namespace
}  // namespace oriolemark

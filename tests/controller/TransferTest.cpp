#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

// The commands of a transfer by their settings. "=" leads to the value where it is not that of the
// setting itself, "*" to the steps of the bar behind the command where they are not one. The first
// of an upload is the run state itself.
const char* const kWritten =
    "=vRunStop TimeFormat TimeDiv*4 TimeDelay Holdoff*3 CH1Display=ON CH1Probe CH1VoltDiv "
    "CH1Offset CH1Coupling CH1BWLimit CH1Invert=OFF CH1Display CH2Display=ON CH2Probe=vCH1Probe "
    "CH2VoltDiv CH2Offset CH2Coupling CH2BWLimit CH2Invert=OFF CH2Display TrigMethod "
    "VideoPolarity VideoSync LineNumber*0 VideoStandard PulseMode*0 PulseWidth*0 TrigSource "
    "TrigSlope TrigMode TrigCoupling TrigLevel SamplingMode AntiAliasing Intensity Acquisition "
    "Averages DisplayType Persist Grid";
const char* const kRead =
    "RunStop CH1Display CH1VoltDiv CH1Offset CH1Coupling CH1BWLimit CH1Probe CH1Invert CH2Display "
    "CH2VoltDiv CH2Offset CH2Coupling CH2BWLimit CH2Probe CH2Invert TimeDiv TimeDelay Holdoff*2 "
    "MemorySize*2 TimeFormat TrigMethod TrigSource TrigSlope TrigMode TrigCoupling VideoPolarity "
    "VideoSync LineNumber*0 VideoStandard TrigLevel PulseMode*0 PulseWidth*0 SamplingMode "
    "AntiAliasing Intensity Acquisition Averages DisplayType Persist Grid";
struct Exchange {
  std::string setting, value;
  int steps = 1;
};
std::vector<Exchange> ExchangesOf(const char* text) {
  std::vector<Exchange> exchanges;
  for (const std::string& word : Split(text, ' ')) {
    const auto steps = Split(word + "*1", '*'), value = Split(steps[0] + "=", '=');
    exchanges.push_back({value[0], value[1], std::stoi(steps[1])});
  }
  return exchanges;
}
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
  void ExpectSteps(const char* exchanges, double step) const {
    std::vector<std::pair<long, double>> expected;
    double value = 0;
    long command = 0;
    for (const Exchange& exchange : ExchangesOf(exchanges)) {
      ++command;
      for (int left = exchange.steps; left > 0; --left) {
        if (value + step <= 100) value += step;
        expected.emplace_back(command, value);
      }
    }
    EXPECT_EQ(steps, expected);
  }
};

TEST(SettingsTransfer, UploadSendsEverySettingInOrderWhateverTheMethod) {
  SettingsBench bench;
  bench.settings = Named("v");
  std::string expected = kStatus;
  for (const auto& [setting, value, steps] : ExchangesOf(kWritten)) {
    expected += ";" + (setting.empty() ? ":" : HeadOf(setting));
    expected += value.empty() ? "v" + setting : value;
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
    CtrlSettings expected = Named(" a b");
    Set(expected, "CH1VoltDiv=abCH1VoltDiv;CH2VoltDiv=abCH2VoltDiv;Intensity=abIntensity");
    std::string asked = kStatus;
    bench.AnswerNamed(" a b");
    for (const Exchange& exchange : ExchangesOf(kRead)) {
      asked += ";" + HeadOf(exchange.setting) + "?";
      if (silent) ValueOf(expected, exchange.setting).clear();
    }
    bench.port.lies[kStatus] = status + "\n";
    if (silent) bench.port.side.GetFaults().Add(*tx5000::ParseFault("silence"));
    expected.RunStop = status == "STOP" ? "STOP" : "RUN";
    Set(expected, "CH1Invert=OFF;CH2Invert=OFF;MemOffset=OFF");
    bench.controller.cmdDownload.Click();
    EXPECT_EQ(bench.Sent(), asked);
    EXPECT_EQ(Listed(bench.settings), Listed(expected)) << status;
    bench.ExpectSteps(kRead, 100.0 / 36);
    EXPECT_TRUE(bench.document.CtrlChanged);
    EXPECT_TRUE(bench.prompts.shown.empty());
    EXPECT_EQ(bench.Joined("Trigger"),
              silent ? "Method [], Source []" : "Method [ a bTrigMethod], Source [ a bTrigSource]");
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

TEST(SettingsTransfer, AnUploadComesBackByADownloadButTwoValuesOfANewDocumentAreRefused) {
  SettingsBench bench;
  bench.controller.cmdUpload.Click();
  EXPECT_EQ(bench.instrument.Unknown(),
            (std::vector<std::string>{":TRIGGER:SYNC:LINE", ":TRIGGER:VIDEO STANDARD:"}));
  Set(bench.settings,
      "RunStop=STOP; CH1Display=OFF; CH1Probe=10X; CH1VoltDiv=20.0V; CH1Offset=-12.00div; "
      "CH1Coupling=DC; CH1BWLimit=ON; CH2Display=ON; CH2VoltDiv=20.0mV; CH2Offset=12.00div; "
      "TimeDiv=1.000ns; TimeDelay=-14ns; Holdoff=0.5ms; TimeFormat=X-Y; TrigMethod=PULSE; "
      "TrigSlope=FALLING; TrigSource=EXT5; TrigMode=SINGLE; TrigCoupling=HF; TrigLevel=0.04div; "
      "PulseMode=-MORE THAN; PulseWidth=0.0015us; VideoPolarity=NEGATIVE; VideoSync=EVEN FIELD; "
      "VideoStandard=PAL/SECAM; LineNumber=313; SamplingMode=REAL_TIME; Acquisition=ENVELOPE; "
      "Averages=256; Intensity=1%; AntiAliasing=ON; DisplayType=DOT; Persist=ON; Grid=HALF");
  CtrlSettings expected = bench.settings;
  expected.CH2Probe = expected.CH1Probe;
  expected.MemOffset = "OFF";
  bench.controller.cmdUpload.Click();
  bench.settings = Named("v");
  bench.controller.cmdDownload.Click();
  EXPECT_EQ(Listed(bench.settings), Listed(expected));
  EXPECT_EQ(bench.instrument.Unknown().size(), 2u);
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
        EXPECT_LE(bench.document.CtrlChanged, trouble.extra > 0);
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
      EXPECT_GE(failures, trouble.failures);
      EXPECT_EQ(failures > 0, trouble.failures > 0);
      EXPECT_EQ(std::ranges::count(bench.Sent(), ';') + 1 + failures, commands + trouble.extra);
      const bool changed = !upload || trouble.extra > 0;
      EXPECT_EQ(bench.document.CtrlChanged, changed);
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

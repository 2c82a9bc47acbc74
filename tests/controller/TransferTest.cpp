#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

// The commands of a transfer by their settings, or as they are. "=" leads to the value where it is
// not that of the setting itself.
const char* const kWritten =
    ":vRunStop TimeFormat TimeDiv TimeDelay Holdoff CH1Display=ON CH1Probe CH1VoltDiv CH1Offset "
    "CH1Coupling CH1BWLimit :CHANNEL1:INVERT:OFF CH1Display CH2Display=ON CH2Probe=vCH1Probe "
    "CH2VoltDiv CH2Offset CH2Coupling CH2BWLimit :CHANNEL2:INVERT:OFF CH2Display TrigMethod "
    "VideoPolarity VideoSync LineNumber VideoStandard PulseMode PulseWidth TrigSource TrigSlope "
    "TrigMode TrigCoupling TrigLevel SamplingMode AntiAliasing Intensity Acquisition Averages "
    "DisplayType Persist Grid";
const char* const kRead =
    ":TRIGGER:STATUS:? CH1Display CH1VoltDiv CH1Offset CH1Coupling CH1BWLimit CH1Probe "
    ":CHANNEL1:INVERT:? CH2Display CH2VoltDiv CH2Offset CH2Coupling CH2BWLimit CH2Probe "
    ":CHANNEL2:INVERT:? TimeDiv TimeDelay Holdoff MemorySize TimeFormat TrigMethod TrigSource "
    "TrigSlope TrigMode TrigCoupling VideoPolarity VideoSync LineNumber VideoStandard TrigLevel "
    "PulseMode PulseWidth SamplingMode AntiAliasing Intensity Acquisition Averages DisplayType "
    "Persist Grid";
const std::string kStatus = ":TRIGGER:STATUS:?";

struct SettingsBench : ControllerBench {
  SettingsBench() {
    Connect();
    ProgressBar& bar = module.progress.ProgressBar1;
    bar.onRefresh = [this, &bar] { progress = bar.Value(); };
  }
  double progress = 0;
};

TEST(SettingsTransfer, UploadSendsEverySettingInOrderWhateverTheMethod) {
  SettingsBench bench;
  bench.settings = Named("v");
  std::string expected = kStatus;
  for (const std::string& word : Split(kWritten, ' ')) {
    const auto cells = Split(word + "=v" + word, '=');
    expected += ";" + (word[0] == ':' ? word : ParameterNamed(cells[0]).Setting(cells[1]));
  }
  bench.controller.cmdUpload.Click();
  EXPECT_EQ(bench.Sent(), expected);
  EXPECT_NEAR(bench.progress, 98, 2);
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
    for (const std::string& setting : Split(kRead, ' ')) {
      const bool named = setting[0] != ':';
      asked += ";" + (named ? ParameterNamed(setting).Question() : setting);
      if (silent && named) ValueOf(expected, setting).clear();
    }
    bench.port.lies[kStatus] = status + "\n";
    if (silent) bench.port.side.GetFaults().Add(*tx5000::ParseFault("silence"));
    expected.RunStop = status == "STOP" ? "STOP" : "RUN";
    Set(expected, "CH1Invert=OFF;CH2Invert=OFF;MemOffset=OFF");
    bench.controller.cmdDownload.Click();
    EXPECT_EQ(bench.Sent(), asked);
    EXPECT_EQ(Listed(bench.settings), Listed(expected)) << status;
    EXPECT_NEAR(bench.progress, 98, 2);
    EXPECT_TRUE(bench.document.CtrlChanged);
    EXPECT_TRUE(bench.prompts.shown.empty());
    EXPECT_EQ(bench.Joined("Trigger"),
              silent ? "Method [], Source []" : "Method [ a bTrigMethod], Source [ a bTrigSource]");
    bench.ExpectRest();
  }
}

TEST(SettingsTransfer, AutoSetBlocksFourSecondsUnderTheHourglassAndReadsEverything) {
  SettingsBench bench;
  Milliseconds busy{0}, loaded{0};
  bench.module.pointer.onChanged = [&] {
    if (bench.module.pointer.Shape() == PointerShape::Hourglass) busy = bench.clock.Now();
  };
  bench.module.progress.onChanged = [&] {
    if (loaded == Milliseconds(0)) loaded = bench.clock.Now();
  };
  bench.DoubleClick(bench.Node("Running Control", "Auto Set"));
  EXPECT_EQ(loaded - busy, Milliseconds(4000));
  const std::string sent = bench.Sent();
  EXPECT_TRUE(sent.starts_with(":AUTO;" + kStatus + ";" + kStatus + ";:CHANNEL1:DISPLAY:?;"));
  EXPECT_EQ(std::ranges::count(sent, ';'), 41);
  EXPECT_TRUE(bench.document.CtrlChanged);
}

TEST(SettingsTransfer, TwoValuesOfANewDocumentAreRefusedAndTheOthersComeBack) {
  SettingsBench bench;
  Set(bench.settings, "CH1Offset=-12.00div; TimeFormat=X-Y; TrigMethod=PULSE; Grid=HALF");
  CtrlSettings expected = bench.settings;
  Set(expected, "VideoSync=ALL LINE; VideoStandard=NTSC; MemOffset=OFF");
  bench.controller.cmdUpload.Click();
  EXPECT_EQ(bench.instrument.Unknown(),
            (std::vector<std::string>{":TRIGGER:SYNC:LINE", ":TRIGGER:VIDEO STANDARD:"}));
  bench.settings = Named("v");
  bench.controller.cmdDownload.Click();
  EXPECT_EQ(Listed(bench.settings), Listed(expected));
}

using Bench = SettingsBench;
struct Trouble {
  const char* name;
  void (*strike)(Bench& bench);
  long extra = 0;  // commands more than the transfer has
};
const Trouble kTroubles[] = {
    {"the line dies", [](Bench& bench) { bench.port.fails = "Input/output error"; }},
    {"Upload again", [](Bench& bench) { bench.controller.cmdUpload.Click(); }},
    {"the bar is closed", [](Bench& bench) { EXPECT_FALSE(bench.module.progress.Unload()); }},
    {"an edit",
     [](Bench& bench) {
       bench.Edit(bench.Node("Display", "Grid"), [&bench] { bench.Confirm("HALF"); });
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
      EXPECT_TRUE(bench.port.fails.empty() ? failures == 0 : failures >= 20) << failures;
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
  Button &download = bench.controller.cmdDownload, &refresh = bench.wave->cmdRefresh;
  for (Button* command : {&download, &download, &refresh, &refresh}) {
    bench.settings.CH1Display = "ON";
    bench.wave->OptionCH.Select(0);
    bench.port.fails = "lost";
    bench.prompts.AnswerNext(MessageAnswer::Ok);
    bench.prompts.AnswerNext(MessageAnswer::OkAndMute);
    bench.At(7000, [&] { bench.port.fails = "other"; });
    // A refresh of three readings; a download has ended by then.
    bench.At(60000, [&] {
      if (bench.module.Refreshing().WaveAutoRefresh) command->Click();
    });
    command->Click();
    EXPECT_EQ(std::ranges::count(bench.prompts.shown, false, &Message::mayMute), 2);
    std::string first;
    for (int i = 0; i < 4; ++i) {
      const Message& message = bench.prompts.shown.at(i);
      first += message.systemText + (message.mayMute ? " again;" : ";");
    }
    EXPECT_EQ(first, "lost;lost again;other;other again;");
    bench.prompts.shown.clear();
    bench.ExpectRest();
  }
}

}  // namespace
}  // namespace oriolemark

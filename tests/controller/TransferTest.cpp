#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

// In the order of the wire: what stands before the value, the number of the setting in the record
// ("ON": that word), and the steps of the bar.
const char* const kWritten = R"(
: | 1 | 1 || :TimeBase:FORMAT: | 21 | 1 || :TimeBase:RANGE: | 16 | 4
:TimeBase:TRIGGER DELAY: | 17 | 1 || :TimeBase:Holdoff: | 18 | 3 || :CHANNEL1:DISPLAY: | ON | 1
:CHANNEL1:PROBE: | 7 | 1 || :CHANNEL1:RANGE: | 3 | 1 || :CHANNEL1:OFFSET: | 4 | 1
:CHANNEL1:COUPLING: | 5 | 1 || :CHANNEL1:BWLimit: | 6 | 1 || :CHANNEL1:INVERT: | OFF | 1
:CHANNEL1:DISPLAY: | 2 | 1 || :CHANNEL2:DISPLAY: | ON | 1 || :CHANNEL2:PROBE: | 7 | 1
:CHANNEL2:RANGE: | 10 | 1 || :CHANNEL2:OFFSET: | 11 | 1 || :CHANNEL2:COUPLING: | 12 | 1
:CHANNEL2:BWLimit: | 13 | 1 || :CHANNEL2:INVERT: | OFF | 1 || :CHANNEL2:DISPLAY: | 9 | 1
:TRIGGER:METHOD: | 22 | 1 || :TRIGGER:POLARITY: | 29 | 1 || :TRIGGER:SYNC: | 30 | 1
:TRIGGER:LINE_NUM: | 32 | 0 || :TRIGGER:VIDEO STANDARD: | 31 | 1 || :TRIGGER:PULSE MODE: | 27 | 0
:TRIGGER:PULSE WIDTH: | 28 | 0 || :TRIGGER:Source: | 24 | 1 || :TRIGGER:SLOPE: | 23 | 1
:TRIGGER:MODE: | 25 | 1 || :TRIGGER:COUPLING: | 26 | 1 || :TRIGGER:LEVEL: | 33 | 1
:ACQUIRE:SAMPLING: | 34 | 1 || :ACQUIRE:ANTI-ALIASING: | 38 | 1 || :ACQUIRE:INTENSITY: | 37 | 1
:ACQUIRE:ACQUISITION: | 35 | 1 || :ACQUIRE:AVERAGES: | 36 | 1 || :DISPLAY:TYPE: | 39 | 1
:DISPLAY:PERSIST: | 40 | 1 || :DISPLAY:GRID: | 41 | 1
)";
const char* const kRead = R"(
:TRIGGER:STATUS: | 1 | 1 || :CHANNEL1:DISPLAY: | 2 | 1 || :CHANNEL1:RANGE: | 3 | 1
:CHANNEL1:OFFSET: | 4 | 1 || :CHANNEL1:COUPLING: | 5 | 1 || :CHANNEL1:BWLimit: | 6 | 1
:CHANNEL1:PROBE: | 7 | 1 || :CHANNEL1:INVERT: | 8 | 1 || :CHANNEL2:DISPLAY: | 9 | 1
:CHANNEL2:RANGE: | 10 | 1 || :CHANNEL2:OFFSET: | 11 | 1 || :CHANNEL2:COUPLING: | 12 | 1
:CHANNEL2:BWLimit: | 13 | 1 || :CHANNEL2:PROBE: | 14 | 1 || :CHANNEL2:INVERT: | 15 | 1
:TimeBase:RANGE: | 16 | 1 || :TimeBase:TRIGGER DELAY: | 17 | 1 || :TimeBase:Holdoff: | 18 | 2
:DATA:SysMemSize: | 19 | 2 || :TimeBase:FORMAT: | 21 | 1 || :TRIGGER:METHOD: | 22 | 1
:TRIGGER:Source: | 24 | 1 || :TRIGGER:SLOPE: | 23 | 1 || :TRIGGER:MODE: | 25 | 1
:TRIGGER:COUPLING: | 26 | 1 || :TRIGGER:POLARITY: | 29 | 1 || :TRIGGER:SYNC: | 30 | 1
:TRIGGER:LINE_NUM: | 32 | 0 || :TRIGGER:VIDEO STANDARD: | 31 | 1 || :TRIGGER:LEVEL: | 33 | 1
:TRIGGER:PULSE MODE: | 27 | 0 || :TRIGGER:PULSE WIDTH: | 28 | 0 || :ACQUIRE:SAMPLING: | 34 | 1
:ACQUIRE:ANTI-ALIASING: | 38 | 1 || :ACQUIRE:INTENSITY: | 37 | 1 || :ACQUIRE:ACQUISITION: | 35 | 1
:ACQUIRE:AVERAGES: | 36 | 1 || :DISPLAY:TYPE: | 39 | 1 || :DISPLAY:PERSIST: | 40 | 1
:DISPLAY:GRID: | 41 | 1
)";
const std::string kStatus = ":TRIGGER:STATUS:?";

struct SettingsBench : ControllerBench {
  SettingsBench() {
    Connect();
    ProgressBar& bar = module.progress.ProgressBar1;
    bar.onRefresh = [this, &bar] {
      const auto commands = std::ranges::count(port.written, '\r');
      if (commands > 1) steps.emplace_back(commands - 1, bar.Value());
    };
  }
  // After so many commands of its own the bar had been raised once more, to this.
  std::vector<std::pair<long, double>> steps;

  void ExpectSteps(const char* table, double step) const {
    std::size_t at = 0;
    const auto rows = Rows(table);
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (int i = std::stoi(rows[row][2]); i > 0; --i, ++at) {
        ASSERT_LT(at, steps.size());
        EXPECT_EQ(steps[at].first, static_cast<long>(row) + 1);
        const double value = step * static_cast<double>(at + 1);
        if (value < 99.9) {
          EXPECT_NEAR(steps[at].second, value, 1e-9);
        }
        EXPECT_TRUE(steps[at].second > 97 || value < 99.9);
      }
    }
    EXPECT_EQ(at, steps.size());
  }
};

TEST(SettingsTransfer, UploadSendsEverySettingInOrderWhateverTheMethod) {
  SettingsBench bench;
  bench.settings = Numbered("v");
  std::string expected = kStatus;
  for (const auto& row : Rows(kWritten)) {
    expected += ";" + row[0] + (row[1].starts_with('O') ? row[1] : "v" + row[1]);
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
    expected.CH1VoltDiv = "ab3";
    expected.CH2VoltDiv = "ab10";
    expected.Intensity = "ab37";
    std::string asked = kStatus;
    for (const auto& row : Rows(kRead)) {
      bench.port.lies[row[0] + "?"] = " a b" + row[1] + "\n";
      asked += ";" + row[0] + "?";
      if (silent) (expected.*kRecord[std::stoul(row[1]) - 1]).clear();
    }
    bench.port.lies[kStatus] = status + "\n";
    if (silent) bench.port.side.GetFaults().Add(*tx5000::ParseFault("silence"));
    expected.RunStop = status == "STOP" ? "STOP" : "RUN";
    expected.CH1Invert = expected.CH2Invert = expected.MemOffset = "OFF";
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
  std::vector<std::pair<PointerShape, Milliseconds>> shapes;
  bench.module.pointer.onChanged = [&] {
    shapes.emplace_back(bench.module.pointer.Shape(), bench.clock.Now());
  };
  Milliseconds loaded{0};
  bench.module.progress.onChanged = [&] {
    if (loaded == Milliseconds(0)) loaded = bench.clock.Now();
    if (bench.module.progress.Visible()) {
      EXPECT_EQ(bench.module.progress.Caption(), "Data Downloading");
    }
  };
  bench.DoubleClick(bench.Node("Running Control", "Auto Set"));
  ASSERT_EQ(shapes.size(), 2u);
  EXPECT_EQ(shapes[0].first, PointerShape::Hourglass);
  EXPECT_EQ(loaded - shapes[0].second, Milliseconds(4000));
  EXPECT_EQ(shapes[1].first, PointerShape::Normal);
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

TEST(SettingsTransfer, WhatAnUploadWritesADownloadBringsBack) {
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
}

TEST(SettingsTransfer, OfANewDocumentTheInstrumentRefusesTwoValues) {
  SettingsBench bench;
  bench.controller.cmdUpload.Click();
  EXPECT_EQ(bench.instrument.Unknown(),
            (std::vector<std::string>{":TRIGGER:SYNC:LINE", ":TRIGGER:VIDEO STANDARD:"}));
}

struct Trouble {
  const char* name;
  std::function<void(SettingsBench&)> strike;
  long extra = 0;    // commands more than the transfer has
  int failures = 0;  // at the least
};
const Trouble kTroubles[] = {
    {"the line dies", [](SettingsBench& bench) { bench.port.fails = "Input/output error"; }, 0, 20},
    {"garbage",
     [](SettingsBench& bench) { bench.port.side.GetFaults().Add(*tx5000::ParseFault("garbage")); }},
    {"Upload again", [](SettingsBench& bench) { bench.controller.cmdUpload.Click(); }},
    {"Download again", [](SettingsBench& bench) { bench.controller.mnuDownLoad.Click(); }},
    {"the bar is closed",
     [](SettingsBench& bench) { EXPECT_FALSE(bench.module.progress.Unload()); }},
    {"an edit",
     [](SettingsBench& bench) {
       bench.Edit(bench.Node("Display", "Grid"), [&bench] { bench.Confirm("HALF"); });
       EXPECT_NE(bench.port.written.find(":DISPLAY:GRID:HALF\r"), std::string::npos);
     },
     1},
    {"New",
     [](SettingsBench& bench) {
       if (bench.document.CtrlChanged) bench.prompts.AnswerNext(MessageAnswer::No);
       bench.controller.mnuNewCtrl.Click();
     }},
    {"the program is closed", [](SettingsBench& bench) { bench.module.main.Close(); }}};

TEST(SettingsTransfer, EndsInOrderWhateverHappensMeanwhile) {
  for (const Trouble& trouble : kTroubles) {
    for (const bool upload : {true, false}) {
      SCOPED_TRACE(std::string(trouble.name) + (upload ? " in Upload" : " in Download"));
      SettingsBench bench;
      const Milliseconds begin = bench.clock.Now();
      bench.At(700, [&] {
        EXPECT_TRUE(bench.module.Transfer().TransferActive);
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
      bench.port.side.GetFaults().Clear();
      bench.controller.mnuConnect.Click();
      bench.controller.cmdDownload.Click();
      EXPECT_EQ(bench.settings.TimeDiv,
                bench.instrument.GetSettings().Text(tx5000::Setting::kTimeRange));
      bench.ExpectRest();
    }
  }
}

}  // namespace
}  // namespace oriolemark

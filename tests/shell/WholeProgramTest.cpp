#include <gtest/gtest.h>

#include "support/ProgramBench.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

// A setting turned at the front panel, the channel option of the view, the block request of CH1Data
// and the channels that come.
const std::tuple<const char*, const char*, int, const char*, int> kModes[] = {
    {":TimeBase:SCAN", "OFF", 2, ":DATA:CHANNEL1", 3},
    {":ACQUIRE:ACQUISITION", "ENVELOPE", 2, ":DATA:EnvelopeMax:CH1", 3},
    {":TimeBase:SCAN", "ON", 0, ":DATA:CHANNEL1", 1},
    {":TimeBase:FORMAT", "X-Y", 0, ":DATA:CHANNEL1", 3},
};

TEST(WholeProgram, ConnectRefreshSeeInEveryMode) {
  for (const auto& [path, value, option, first, channels] : kModes) {
    SCOPED_TRACE(std::string(path) + " " + value);
    ProgramBench bench;
    ASSERT_TRUE(bench.instrument.Turn(path, value));
    bench.module.settings.CH2Display = "ON";
    bench.At(200, [&] { bench.module.main.mnuToolsConnect.Click(); });
    bench.At(2000, [&] { bench.module.browser.files.AddWaveItem(); });
    const WaveRecord& record = bench.module.sheet.Waves[0];
    bool drawn = false;
    bench.At(3000, [&, wanted = option] {
      bench.wave->WavePic.onChanged = [&] { drawn = record.HasData; };
      bench.wave->OptionCH.Select(wanted);
      // A stopped instrument holds its record, so that it can be asked again.
      bench.instrument.Turn(":STOP", "");
      bench.At(100, [&] {
        bench.wave->KeyDown(kF5Key, 0);
        EXPECT_FALSE(bench.wave->cmdRefresh.Enabled()) << "while the reading lasts";
      });
      bench.wave->KeyDown(kF5Key, kShiftHeld);
      EXPECT_FALSE(record.HasData) << "a key of its own";
      bench.wave->KeyDown(kF5Key, 0);
    });
    bench.RunUntil(60000);

    EXPECT_TRUE(bench.prompts.shown.empty());
    EXPECT_TRUE(drawn);
    EXPECT_EQ(record.Channels, channels);
    bench.ExpectSamples(record, first);
    EXPECT_EQ(bench.instrument.UnknownCommands(), 0);
    EXPECT_TRUE(bench.port.written.ends_with(":KEY:LOCK:ENABLE\r"));
  }
}

TEST(WholeProgram, OneLampShinesAndTheStatusGoesTwoSecondsAfterTheLastEvent) {
  ProgramBench bench;
  frmMain& main = bench.module.main;
  for (const int at : {200, 2000}) bench.At(at, [&] { main.mnuToolsConnect.Click(); });
  for (const int at : {8000, 9000}) bench.At(at, [&] { bench.port.onEvent(1009); });
  bench.At(10900, [&] { EXPECT_EQ(main.StatusPanel.Text(), "Status: Parity Error"); });
  bench.At(11100, [&] { EXPECT_EQ(main.StatusPanel.Text(), "Status: "); });
  bench.RunUntil(12000);
  EXPECT_EQ(Bits(main.picLED_ON.Visible(), main.picLED_OFF.Visible()), "10");
}

TEST(WholeProgram, WindowsComeBackWhereTheyStoodUnlessThatIsOutOfSight) {
  for (const bool minimised : {false, true}) {
    ProgramBench bench;
    bench.At(500, [&] { bench.module.main.Minimised = minimised; });
    bench.RunUntil(1000);
    EXPECT_EQ(bench.store.values.contains({"Settings", "MainWidth"}), !minimised);
    EXPECT_EQ(bench.module.main.Place().width, 6500);
  }
  // What is stored, and the place.
  for (const auto& row : Rows(R"(
- | 500,800 || abc | 500,800 || -20.5 | -20.5,-20.5 || -9000 | 400,600 || 15000 | 15000,15000
15001 | 400,600
)")) {
    ProgramBench bench;
    frmPrgress& progress = bench.module.progress;
    progress.screenWidth = progress.screenHeight = 15000;
    for (const char* key : {"ProgressLeft", "ProgressTop"}) bench.Store("Settings", key, row[0]);
    progress.Load();
    EXPECT_EQ(NumberText(progress.Place().left) + "," + NumberText(progress.Place().top), row[1]);
  }
}

TEST(WholeProgram, HelpOpensTheFileBesideTheProgramAndTellsWhenItCannot) {
  ProgramBench bench;
  bench.module.main.mnuHelpContents.Click();
  bench.module.main.ShowHelp(HelpCommand::Context, "#page");
  EXPECT_TRUE(bench.prompts.shown.empty());
  bench.help.error = "no such file";
  bench.module.main.mnuHelpSearchForHelpOn.Click();
  const std::string file = "/program/Oriolemark.hlp";
  const decltype(bench.help.opened) opened = {{file, HelpCommand::Contents},
                                              {file + "#page", HelpCommand::Context},
                                              {file, HelpCommand::PartialKey}};
  EXPECT_EQ(bench.help.opened, opened);
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{{.systemText = "no such file"}});
}

}  // namespace
}  // namespace oriolemark

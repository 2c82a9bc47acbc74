#include <gtest/gtest.h>

#include "support/ProgramBench.h"

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
      bench.At(100, [&] { EXPECT_FALSE(bench.wave->cmdRefresh.Enabled()); });
      bench.wave->KeyDown(frmWave::kKeyF5, frmWave::ShiftKeys::Held);
      EXPECT_FALSE(record.HasData) << "a key of its own";
      bench.wave->KeyDown(frmWave::kKeyF5, frmWave::ShiftKeys::None);
    });
    bench.RunUntil(60000);

    EXPECT_TRUE(bench.prompts.shown.empty());
    EXPECT_TRUE(record.HasData && drawn);
    EXPECT_EQ(record.Channels, channels);
    bench.ExpectSamples(record, first);
    EXPECT_EQ(bench.instrument.UnknownCommands(), 0);
    EXPECT_TRUE(bench.port.written.ends_with(":KEY:LOCK:ENABLE\r"));
  }
}

TEST(WholeProgram, ALabelEditNamesTheItemAndItsViewButNotTheRoot) {
  ProgramBench bench;
  DataSheet& sheet = bench.module.sheet;
  TreeView& tree = bench.module.browser.DataSheetTree;
  bench.module.main.Load();
  bench.module.browser.files.AddWaveItem();
  sheet.Modified = false;
  for (const bool isRoot : {true, false}) {
    tree.Select(isRoot ? sheet.RootNode : sheet.Waves[0].TreeNode);
    tree.EndLabelEdit("A \\ B");
    EXPECT_EQ(tree.Text(tree.Selected()), isRoot ? "Data Sheet" : "A \\ B");
    EXPECT_EQ(sheet.Waves[0].Name, isRoot ? "Wave0" : "A \\ B");
    EXPECT_EQ(bench.wave->Caption(), sheet.Waves[0].Name);
    EXPECT_EQ(sheet.Modified, !isRoot);
    EXPECT_EQ(bench.Told().size(), isRoot ? 1u : 0u);
  }
}

TEST(WholeProgram, HelpOpensTheFileBesideTheProgramAndTellsWhenItCannot) {
  ProgramBench bench;
  bench.module.main.mnuHelpContents.Click();
  EXPECT_TRUE(bench.prompts.shown.empty());
  bench.help.error = "no such file";
  bench.module.main.mnuHelpSearchForHelpOn.Click();
  const std::string file = "/program/Oriolemark.hlp";
  const decltype(bench.help.opened) opened = {{file, HelpCommand::Contents},
                                              {file, HelpCommand::PartialKey}};
  EXPECT_EQ(bench.help.opened, opened);
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{{.systemText = "no such file"}});
}

}  // namespace
}  // namespace oriolemark

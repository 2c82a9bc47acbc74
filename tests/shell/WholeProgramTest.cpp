#include <gtest/gtest.h>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

// The settings turned at the front panel, the channel option of the view, the block request of
// CH1Data and the channels that come.
using Hand = std::vector<std::pair<const char*, const char*>>;
const std::tuple<const char*, Hand, int, const char*, int> kModes[] = {
    {"plain both", {}, 2, ":DATA:CHANNEL1", 3},
    {"envelope both", {{":ACQUIRE:ACQUISITION", "ENVELOPE"}}, 2, ":DATA:EnvelopeMax:CH1", 3},
    {"scan", {{":TimeBase:SCAN", "ON"}}, 0, ":DATA:CHANNEL1", 1},
    {"X-Y takes both channels", {{":TimeBase:FORMAT", "X-Y"}}, 0, ":DATA:CHANNEL1", 3},
};

TEST(WholeProgram, ConnectRefreshSeeInEveryMode) {
  for (const auto& [name, hand, option, first, channels] : kModes) {
    SCOPED_TRACE(name);
    ProgramBench bench;
    for (const auto& [path, value] : hand) {
      ASSERT_TRUE(bench.instrument.Turn(path, value)) << path;
    }
    bench.module.settings.CH2Display = "ON";
    bench.At(200, [&] { bench.module.main.mnuToolsConnect.Click(); });
    bench.At(2000, [&] { bench.module.browser.files.AddWaveItem(); });
    const WaveRecord& record = bench.module.sheet.Waves[0];
    bool drawn = false;
    const int wanted = option;  // a lambda takes no structured binding
    bench.At(3000, [&] {
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

TEST(WholeProgram, AViewClosedInItsOwnLoopEndsTheLoopAndStaysUntouched) {
  ProgramBench bench;
  bench.Store("General", "StartupCheckHardware", "-1");
  bench.Store("Refresh", "Refresh Type", "Auto");
  bench.Store("Refresh", "Refresh Interval", "1000");
  bench.At(3000, [&] { bench.module.browser.files.AddWaveItem(); });
  bench.At(4000, [&] { bench.wave->cmdRefresh.Click(); });
  // In the middle of a reading, which goes on to its end.
  bench.At(4400, [&] {
    EXPECT_TRUE(bench.module.Transfer().TransferActive);
    bench.wave->Unload();
    EXPECT_FALSE(bench.module.Refreshing().WaveAutoRefresh);
  });
  std::string written;
  bench.At(6000, [&] { written = bench.port.written; });
  bench.At(40000, [&] {
    EXPECT_EQ(bench.port.written, written) << "no reading after the view has gone";
    const WaveRecord& record = bench.module.sheet.Waves[0];
    EXPECT_TRUE(record.HasData);
    EXPECT_FALSE(record.ViewOpen);
    EXPECT_EQ(bench.waiting.Depth(), 1) << "the loop has ended";
    EXPECT_EQ(bench.wave->cmdRefresh.Face(), kRefreshFace);
  });
  bench.RunUntil(50000);
  EXPECT_FALSE(bench.clock.Stuck());
}

TEST(WholeProgram, ALabelEditNamesTheItemAndItsView) {
  const std::tuple<const char*, TreeNode (*)(const DataSheet&), const char*, bool> rows[] = {
      {"the root", [](const DataSheet& sheet) { return sheet.RootNode; }, "Data Sheet", false},
      {"an item", [](const DataSheet& sheet) { return sheet.Waves[0].TreeNode; }, "A \\ B", true},
  };
  for (const auto& [name, node, shown, renamed] : rows) {
    SCOPED_TRACE(name);
    ProgramBench bench;
    DataSheet& sheet = bench.module.sheet;
    bench.module.main.Load();
    bench.module.browser.files.AddWaveItem();
    sheet.Modified = false;
    TreeView& tree = bench.module.browser.DataSheetTree;
    tree.Select(node(sheet));
    tree.EndLabelEdit("A \\ B");
    EXPECT_EQ(tree.Text(tree.Selected()), shown);
    EXPECT_EQ(sheet.Modified, renamed);
    EXPECT_EQ(bench.wave->Caption(), sheet.Waves[0].Name);
    EXPECT_EQ(bench.prompts.shown.size(), renamed ? 0u : 1u);
  }
}

TEST(WholeProgram, HelpOpensTheFileBesideTheProgramAndTellsWhenItCannot) {
  ProgramBench bench;
  frmMain& main = bench.module.main;
  main.mnuHelpContents.Click();
  EXPECT_TRUE(bench.prompts.shown.empty());
  bench.help.error = "no such file";
  main.mnuHelpSearchForHelpOn.Click();
  const std::string file = "/program/Oriolemark.hlp";
  EXPECT_EQ(bench.help.opened,
            (std::vector<std::pair<std::string, HelpCommand>>{{file, HelpCommand::Contents},
                                                              {file, HelpCommand::PartialKey}}));
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{{.text = "no such file"}});
}

}  // namespace
}  // namespace oriolemark

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
    EXPECT_TRUE(record.HasData && drawn);
    EXPECT_EQ(record.Channels, channels);
    bench.ExpectSamples(record, first);
    EXPECT_EQ(bench.instrument.UnknownCommands(), 0);
    EXPECT_TRUE(bench.port.written.ends_with(":KEY:LOCK:ENABLE\r"));
  }
}

TEST(WholeProgram, SixteenItemsOfAKindFitASheetAndNoneWithoutOne) {
  ProgramBench bench;
  DataSheet& sheet = bench.module.sheet;
  bench.module.main.Load();
  std::vector<Message> told(3, Warning("Exceed maximum file numbers limit"));
  const auto tools = std::span(bench.module.main.ToolButtons).subspan(10, 3);
  for (Button& tool : tools) {
    for (int item = 0; item < 17; ++item) tool.Click();
  }
  EXPECT_EQ(sheet.WaveCount + sheet.MeasureCount + sheet.DataCount, 3 * 16);
  bench.module.browser.DataSheetTree.Remove(sheet.SheetNode);
  bench.module.browser.files.AddDataItem();
  told.push_back(Warning("Please Open or Creat a Data Sheet First"));
  EXPECT_EQ(bench.prompts.shown, told);
  for (const Button& tool : tools) EXPECT_FALSE(tool.Enabled());
}

TEST(WholeProgram, ANewSheetNumbersFromZeroAndItsMeasuresKeepThreeTestSwitches) {
  ProgramBench bench;
  DataSheet& sheet = bench.module.sheet;
  TreeView& tree = bench.module.browser.DataSheetTree;
  bench.module.main.Load();
  for (const std::string switches : {"000000000000000000", "000000000000000111"}) {
    bench.module.browser.mnuNewDataSheet_Click();
    for (Button& tool : std::span(bench.module.main.ToolButtons).subspan(10, 3)) tool.Click();
    std::string names, switched;
    for (const TreeNode node : tree.Children(sheet.SheetNode)) names += tree.Text(node) + " ";
    EXPECT_EQ(names, "Wave0 Measure0 Data0 ");
    for (MeasureValue& value : sheet.Measures[0].Values) {
      switched += value.Enabled ? '1' : '0';
      EXPECT_TRUE(value.Over > value.Under && value.Under > 0);
      value.Over = value.Under = 0;
      value.Enabled = true;
    }
    EXPECT_EQ(switched, switches) << "the last three keep what the slot held";
  }
}

TEST(WholeProgram, OneLampShinesAndTheStatusGoesTwoSecondsAfterTheLastEvent) {
  ProgramBench bench;
  frmMain& main = bench.module.main;
  for (const int at : {200, 2000}) bench.At(at, [&] { main.mnuToolsConnect.Click(); });
  for (const int at : {8000, 9000}) bench.At(at, [&] { bench.port.onEvent(1009); });
  const std::pair<int, const char*> texts[] = {{10900, "Status: Parity Error"},
                                               {11100, "Status: "}};
  for (const auto& [at, text] : texts) {
    bench.At(at, [&, shown = text] { EXPECT_EQ(main.StatusPanel.Text(), shown); });
  }
  bench.RunUntil(12000);
  EXPECT_TRUE(main.picLED_ON.Visible() && !main.picLED_OFF.Visible());
}

TEST(WholeProgram, WindowsComeBackWhereTheyStoodUnlessThatIsOutOfSight) {
  for (const bool minimised : {false, true}) {
    ProgramBench bench;
    bench.At(500, [&] { bench.module.main.Minimised = minimised; });
    bench.RunUntil(1000);
    EXPECT_EQ(bench.store.values.contains({"Settings", "MainWidth"}), !minimised);
    EXPECT_EQ(bench.module.main.Place().width, 6500);
  }
  const std::tuple<const char*, double, double> places[] = {
      {"", 500, 800},      {"abc", 500, 800},       {"-20.5", -20.5, -20.5},
      {"-9000", 400, 600}, {"15000", 15000, 15000}, {"15001", 400, 600}};
  for (const auto& [stored, left, top] : places) {
    ProgramBench bench;
    frmPrgress& progress = bench.module.progress;
    progress.screenWidth = progress.screenHeight = 15000;
    for (const char* key : {"ProgressLeft", "ProgressTop"}) bench.Store("Settings", key, stored);
    progress.Load();
    EXPECT_EQ(progress.Place().left, left) << stored;
    EXPECT_EQ(progress.Place().top, top) << stored;
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
    const TreeNode node = isRoot ? sheet.RootNode : sheet.Waves[0].TreeNode;
    tree.Select(sheet.SheetNode);
    tree.EndLabelEdit(node, "A \\ B");
    EXPECT_EQ(tree.Text(node), isRoot ? "Data Sheet" : "A \\ B");
    EXPECT_EQ(tree.Selected(), sheet.SheetNode) << "what the click that ended the edit was for";
    EXPECT_EQ(sheet.Waves[0].Name, isRoot ? "Wave0" : "A \\ B");
    EXPECT_EQ(bench.wave->Caption(), sheet.Waves[0].Name);
    EXPECT_EQ(sheet.Modified, !isRoot);
    EXPECT_EQ(bench.Told().size(), isRoot ? 1u : 0u);
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

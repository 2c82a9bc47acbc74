#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

constexpr const char* kAsks = "Save the changes to the Data Sheet File";

struct Browser : LinkedBench, testing::Test {
  Browser() {
    fs::remove_all(recovered);
    fs::remove(path);
  }
  ReadingView& View(int slot, ItemKind kind = ItemKind::Wave) {
    const auto& views = sheet.*RowOf(kind).views;
    return dynamic_cast<ReadingView&>(*views[static_cast<std::size_t>(slot)]);
  }
  // The items in their slots, each with its node's text and the caption of its open view.
  std::string Items(ItemKind kind = ItemKind::Wave) {
    std::string all;
    for (int i = 0; i < sheet.*RowOf(kind).count; ++i) {
      const ItemRecord& item = RowOf(kind).record(sheet, i);
      all += item.Name + (tree.Text(item.TreeNode) == item.Name ? "" : "!");
      const ReadingView& view = View(i, kind);
      if (view.Loaded()) all += "(" + view.Caption() + view.Tag() + ")";
      all += " ";
    }
    return all;
  }
  void Select(int slot, ItemKind kind = ItemKind::Wave) {
    tree.Select(RowOf(kind).record(sheet, slot).TreeNode);
  }
  // Whether the record of this slot, which held nothing, has a reading that its open view shows.
  bool Taken(int slot, ItemKind kind) {
    const auto at = static_cast<std::size_t>(slot);
    if (kind == ItemKind::Measure) return sheet.Measures[at].Values[0].Text != "old";
    if (kind == ItemKind::Data) {
      const auto& view = dynamic_cast<frmData&>(View(slot, kind));
      return sheet.Datas[at].Count == (view.Loaded() ? view.MeasureView.Count() : 600);
    }
    if (sheet.Waves[at].HasData) ExpectSamples(sheet.Waves[at], ":DATA:CHANNEL1");
    return sheet.Waves[at].HasData;
  }
  // The entries of the popup menu that are shown, "-" for a bar, in brackets if disabled.
  std::string Menu() {
    tree.MouseDown(kRightButton);
    std::string all;
    for (const MenuEntry* entry : browser.pop_mnu1.entries) {
      if (entry == nullptr || !entry->Visible()) continue;
      all += entry->Enabled() ? entry->Caption() + "|" : "[" + entry->Caption() + "]|";
    }
    return all;
  }
  // The names of the recovered files, each with the line of the first item's name.
  Texts Copies() const {
    Texts copies;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(recovered, none)) {
      const std::string bytes = ReadFile(entry.path(), 1000).bytes;
      copies.push_back(entry.path().filename().string() + ":" + Split(bytes, '\n').at(5));
    }
    return copies;
  }

  frmDataSheetTree& browser = module.browser;
  TreeView& tree = browser.DataSheetTree;
  const std::string path = testing::TempDir() + "browser" + std::to_string(getpid()) + ".orm";
};

TEST_F(Browser, AsksBeforeChangesWouldBeLostAndKeepsACopyOfThoseThatReachNoFile) {
  const std::string other = path + ".other";
  std::ofstream(other) << "\"Tavik Technologies TX5000 Data Sheet\"\n\"Other\"\n1\n0\n0\n\"W\"\n";
  // The waves afterwards, unless cancelled.
  const std::tuple<const char*, std::function<void()>, const char*> commands[] = {
      {"New", [&] { browser.mnuNewDataSheet.Click(); }, ""},
      {"Open", [&] { browser.mnuOpenDataSheet.Click(); }, "W(W0) "},
      {"recent", [&] { browser.OpenDataSheet(other); }, "W(W0) "},
      {"remove", [&] { tree.Select(sheet.SheetNode), browser.mnuRemove.Click(); }, ""}};
  // The answer, the file of the sheet, and whether the user names one if it has no file.
  const std::tuple<MessageAnswer, const char*, bool> answers[] = {
      {MessageAnswer::Cancel, "", false},
      {MessageAnswer::No, "", false},
      {MessageAnswer::Yes, "", true},
      {MessageAnswer::Yes, "", false},
      {MessageAnswer::Yes, "/", false}};
  for (const auto& [name, run, after] : commands) {
    for (const auto& [answer, file, named] : answers) {
      const bool saves = answer == MessageAnswer::Yes, fails = *file == '/';
      SCOPED_TRACE(name + std::to_string(static_cast<int>(answer)) + file);
      sheet.Modified = false;
      browser.mnuNewDataSheet_Click();
      Add(ItemKind::Wave, 1);
      sheet.FileName = file;
      prompts.paths = {other};
      if (saves && !fails) prompts.paths.push_front(named ? path : "");
      prompts.AnswerNext(answer);
      run();
      clock.Run(Milliseconds(10));
      EXPECT_EQ(Told(),
                fails ? (Texts{std::string(kAsks) + " /", "Is a directory"}) : Texts{kAsks});
      EXPECT_EQ(Items(), answer == MessageAnswer::Cancel ? "Wave0(Wave00) " : after);
      EXPECT_EQ(fs::exists(path), named);
      EXPECT_EQ(Copies(),
                saves && !named ? Texts{"Untitle 2026-11-22 10.00.00.orm:\"Wave0\"\r"} : Texts{});
      fs::remove_all(recovered);
      fs::remove(path);
    }
  }
}

TEST_F(Browser, ASaveThatFailedIsCopiedWhenTheSheetIsLeft) {
  Add(ItemKind::Wave, 1);
  sheet.Title = "\xE4/\t";
  sheet.FileName = "/";
  browser.mnuSaveDataSheet_Click();
  EXPECT_FALSE(sheet.Modified);
  EXPECT_EQ(Copies(), Texts{});
  module.main.Close();
  EXPECT_EQ(Copies(), Texts{"ä__ 2026-11-22 10.00.00.orm:\"Wave0\"\r"});
}

TEST_F(Browser, AnOpenThatIsCancelledLeavesDeadNodesAndAFileThatIsNotOverwritten) {
  Add(ItemKind::Wave, 1);
  prompts.paths = {path};
  browser.mnuSaveDataSheet_Click();
  const TreeNode dead = sheet.Waves[0].TreeNode;
  sheet.Modified = true;
  prompts.AnswerNext(MessageAnswer::No);
  browser.mnuOpenDataSheet.Click();
  EXPECT_EQ(Copies(), Texts{"Untitle 2026-11-22 10.00.00.orm:\"Wave0\"\r"}) << "No was for an Open";
  sheet.Modified = false;
  EXPECT_EQ(sheet.WaveCount, 0);
  EXPECT_EQ(sheet.FileName, path);
  EXPECT_FALSE(View(0).Loaded());
  tree.Select(dead);
  tree.DoubleClick();
  tree.KeyDown(kDeleteKey);
  EXPECT_EQ(tree.Text(dead), "Wave0");
  const std::size_t asked = prompts.questions.size();
  browser.mnuSaveDataSheet_Click();
  EXPECT_EQ(prompts.questions.size(), asked + 1);
  browser.OpenDataSheet(path);
  EXPECT_EQ(Items(), "Wave0(Wave00) ");
  browser.mnuSaveDataSheet_Click();
  EXPECT_EQ(prompts.questions.size(), asked + 1) << "it has a name again";
}

TEST_F(Browser, SixteenItemsOfAKindFitASheetAndNoneWithoutOne) {
  std::deque<Button>& tools = module.main.ToolButtons;
  for (int item = 0; item < 3 * 17; ++item) tools[10 + item / 17].Click();
  EXPECT_EQ(sheet.WaveCount + sheet.MeasureCount + sheet.DataCount, 3 * 16);
  tree.Remove(sheet.SheetNode);
  browser.files.AddDataItem();
  std::vector<Message> told(3, Warning("Exceed maximum file numbers limit"));
  told.push_back(Warning("Please Open or Creat a Data Sheet First"));
  EXPECT_EQ(prompts.shown, told);
  EXPECT_EQ(Bits(tools[10].Enabled(), tools[11].Enabled(), tools[12].Enabled()), "000");
}

TEST_F(Browser, TheMeasuresOfANewSheetKeepThreeTestSwitches) {
  prompts.toSave = MessageAnswer::No;
  for (const std::string switches : {"000000000000000000", "000000000000000111"}) {
    browser.mnuNewDataSheet_Click();
    Add(ItemKind::Measure, 1);
    std::string switched;
    for (MeasureValue& value : sheet.Measures[0].Values) {
      switched += value.Enabled ? '1' : '0';
      value.Enabled = true;
    }
    EXPECT_EQ(switched, switches) << "the last three keep what the slot held";
  }
}

TEST_F(Browser, ALabelEditNamesAllButTheRootAndTheMenuFitsTheSelectedNode) {
  Add(ItemKind::Wave, 1);
  sheet.Modified = false;
  for (const bool isRoot : {true, false}) {
    const TreeNode node = isRoot ? sheet.RootNode : sheet.Waves[0].TreeNode;
    tree.Select(sheet.SheetNode);
    tree.EndLabelEdit(node, "A \\ B");
    EXPECT_EQ(tree.Text(node), isRoot ? "Data Sheet" : "A \\ B");
    EXPECT_EQ(tree.Selected(), sheet.SheetNode) << "what the click that ended the edit was for";
    EXPECT_EQ(sheet.Waves[0].Name, isRoot ? "Wave0" : "A \\ B");
    EXPECT_EQ(View(0).Caption(), sheet.Waves[0].Name);
    EXPECT_EQ(sheet.Modified, !isRoot);
    EXPECT_EQ(Told().size(), isRoot ? 1u : 0u);
  }
  const std::string file = "&New Data Sheet|&Open Data Sheet|&Save Data Sheet|Sa&ve Data Sheet As|";
  const auto with = [&](const std::string& name) {
    return file + "&Add New|Re&name(" + name + ")|-|&Remove(" + name + ")|-|So&rted|";
  };
  tree.Select(sheet.RootNode);
  EXPECT_EQ(Menu(), file + "&Add New|So&rted|");
  tree.Select(sheet.SheetNode);
  EXPECT_EQ(Menu(), with("Untitle"));
  tree.EndLabelEdit(sheet.Waves[0].TreeNode, "R&D \xE4");
  Select(0);
  EXPECT_EQ(Menu(), with("R&&D ä"));
  sheet.Modified = false;
  tree.Select(sheet.SheetNode);
  tree.KeyDown(kDeleteKey);
  EXPECT_EQ(Menu(),
            "&New Data Sheet|&Open Data Sheet|[&Save Data Sheet]|[Sa&ve Data Sheet As]|[&Add New]|"
            "[So&rted]|");
  module.main.mnuFileSaveDataSheet.Click();
  EXPECT_EQ(Told(), Texts{"Please Open or Creat a Data Sheet First"});
}

TEST_F(Browser, TheSortAndTheSheetOutliveThePaneAndTheSortTheSheet) {
  const auto reopen = [&] {
    module.main.tabDock.HidePane("DataSheet");
    module.main.tabDock.ShowPane("DataSheet");
  };
  browser.mnuSorted.Click();
  prompts.toSave = MessageAnswer::No;
  browser.mnuNewDataSheet_Click();
  Add(ItemKind::Wave, 2);
  tree.EndLabelEdit(sheet.Waves[0].TreeNode, "Z");
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_EQ(tree.Text(tree.Children(sheet.SheetNode).front()), "Wave1");
    EXPECT_EQ(Items(), "Z(Z0) Wave1(Wave11) ");
    reopen();
  }
  tree.Select(sheet.SheetNode);
  browser.mnuRemove.Click();
  EXPECT_FALSE(module.main.ToolButtons[10].Enabled());
  reopen();
  EXPECT_TRUE(module.main.ToolButtons[10].Enabled());
}

TEST_F(Browser, ARemovalMovesLaterItemsWithTheirViewsAndTheReadingThatRuns) {
  // The slot that is removed while slot 2 is read, or what else happens then; the items, and the
  // slot with the reading.
  enum { NewSheet = -1, WindowCloses = -2, WindowReopens = -3 };
  constexpr std::tuple<int, const char*, int> kRows[] = {
      {0, "#1 #2(#21) #3(#32) ", 1},
      {1, "#0(#00) #2(#21) #3(#32) ", 1},
      {2, "#0(#00) #1 #3(#32) ", -1},
      {3, "#0(#00) #1 #2(#22) ", 2},
      {WindowCloses, "#0(#00) #1 #2 #3(#33) ", 2},
      {WindowReopens, "#0(#00) #1 #2(#22) #3(#33) ", 2},
      {NewSheet, "", -1}};
  const auto act = [this](int removed, ItemKind kind) {
    if (removed == NewSheet) return browser.mnuNewDataSheet_Click();
    if (removed == WindowCloses || removed == WindowReopens) View(2, kind).Unload();
    if (removed == WindowCloses) return;
    if (removed == WindowReopens) return browser.files.ShowView(kind, 2);
    Select(removed, kind);
    browser.mnuRemove.Click();
  };
  prompts.toSave = MessageAnswer::No;
  for (const ItemKind kind : kTreeOrder) {
    for (const auto& [removed, items, readInto] : kRows) {
      SCOPED_TRACE(RowOf(kind).word + std::to_string(removed));
      browser.mnuNewDataSheet_Click();
      Add(kind, 4);
      for (WaveRecord& item : sheet.Waves) item.Count = -1;
      for (MeasureRecord& item : sheet.Measures) item.Values[0].Text = "old";
      for (DataRecord& item : sheet.Datas) item.Count = -1;
      View(1, kind).Unload();
      View(2, kind).OptionCH.Select(0);
      At(400, [&, removed = removed, readInto = readInto] {
        ASSERT_TRUE(module.Transfer().TransferActive);
        EXPECT_FALSE(View(2, kind).cmdRefresh.Enabled());
        act(removed, kind);
        for (int i = 0; i < sheet.*RowOf(kind).count; ++i) {
          const ReadingView& view = View(i, kind);
          EXPECT_EQ(view.cmdRefresh.Enabled(), i != readInto || !view.Loaded()) << i;
        }
      });
      View(2, kind).KeyDown(kF5Key, 0);
      clock.Run(Milliseconds(10));
      EXPECT_EQ(Items(kind), Filled(items, '#', RowOf(kind).word));
      for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(RowOf(kind).record(sheet, i).HasData, i == readInto) << i;
        EXPECT_EQ(Taken(i, kind), i == readInto) << i;
        EXPECT_TRUE(i >= sheet.*RowOf(kind).count || View(i, kind).cmdRefresh.Enabled()) << i;
      }
    }
  }
}

TEST_F(Browser, AnAutoRefreshKeepsOtherKindsAwayAndEndsWithItsItem) {
  module.preferences.refresh = {.RefreshType = "Auto", .RefreshInterval = 20000};
  prompts.toSave = MessageAnswer::No;
  for (const ItemKind running : kTreeOrder) {
    for (const ItemKind asked : kTreeOrder) {
      SCOPED_TRACE(std::string(RowOf(running).word) + " and " + RowOf(asked).word);
      browser.mnuNewDataSheet_Click();
      Add(running, 2);
      Add(asked, 2);
      At(10000, [&] {
        ASSERT_FALSE(module.Transfer().TransferActive);
        EXPECT_EQ(View(0, running).cmdRefresh.Face(), kStopFace);
        if (running != asked) View(1, asked).cmdRefresh.Click();
        EXPECT_FALSE(RowOf(asked).record(sheet, 1).HasData);
        EXPECT_TRUE(module.Refreshing().OtherThan(asked) || running == asked);
      });
      At(30000, [&] {
        EXPECT_EQ(View(0, running).cmdRefresh.Face(), kStopFace) << "it goes on";
        Select(0, running);
        browser.mnuRemove.Click();
      });
      View(0, running).cmdRefresh.Click();
      const RefreshFlags& flags = module.Refreshing();
      EXPECT_EQ(Bits(flags.WaveAutoRefresh, flags.MeasureAutoRefresh, flags.DataAutoRefresh),
                "000");
      EXPECT_EQ(View(0, running).cmdRefresh.Face(), kRefreshFace) << "of the item behind it";
      EXPECT_FALSE(RowOf(running).record(sheet, 0).HasData);
    }
  }
}

TEST_F(Browser, TheDeleteKeyAsksBeforeItRemovesData) {
  Add(ItemKind::Wave, 2);
  sheet.Waves[0].HasData = true;
  Select(0);
  for (const auto answer : {MessageAnswer::No, MessageAnswer::Yes}) {
    prompts.AnswerNext(answer);
    tree.KeyDown(kDeleteKey);
    EXPECT_EQ(prompts.shown.back().buttons, MessageButtons::YesNo);
    EXPECT_EQ(Told(), Texts{"Remove Wave0?"});
    EXPECT_EQ(sheet.WaveCount, answer == MessageAnswer::No ? 2 : 1);
  }
  tree.KeyDown(kDeleteKey);
  EXPECT_EQ(Items() + std::to_string(Told().size()), "0") << "nothing to lose, no question";
  EXPECT_EQ(tree.Selected(), sheet.SheetNode);
}

TEST_F(Browser, FilesComeFromTheMenuTheRecentOnesTheStartAndTheDesktop) {
  const std::string settings = path + ".cfx";
  prompts.paths = {settings, path};
  Add(ItemKind::Wave, 1);
  module.main.mnuFileSaveAll.Click();
  EXPECT_EQ(prompts.questions.at(1).filter, "Data Sheet Files (*.orm)|*.orm");
  EXPECT_FALSE(tree.Marked(sheet.SheetNode));
  ProgramBench start;
  start.store.values = store.values;
  start.Store("General", "StartupLoadSheet", "True");
  start.module.main.FilesAtStart = {"a.txt", settings};
  const auto waves = [&] { return std::exchange(start.module.sheet.WaveCount, 0); };
  start.At(300, [&] {
    EXPECT_EQ(waves(), 1) << "at the start";
    EXPECT_EQ(start.module.controlDocument.CtrlFileName, settings) << "of the command line";
  });
  start.At(400, [&] {
    const Texts dropped{"a.txt", settings, path, "/other.orm"};
    ASSERT_TRUE(frmMain::TakesDrop(dropped));
    start.module.settings.RunStop = "lost";
    start.module.main.OpenDropped(dropped);
    EXPECT_EQ(start.module.sheet.FileName, path);
    EXPECT_EQ(start.module.settings.RunStop, "RUN");
    EXPECT_EQ(waves(), 1);
  });
  start.RunUntil(500);
  EXPECT_EQ(frmMain::TakesDrop({"x.orm.txt", ".orm"}) + frmMain::TakesDrop({"x.CFX"}), 1);
}

TEST(RecoveredFiles, TheNewestTenStayAndAFailureIsSilent) {
  const std::string folder = testing::TempDir() + "copies" + std::to_string(getpid());
  const auto now = [] { return "now"; };
  const auto sync = [](std::FILE*) { return true; };
  RecoveredFiles files(folder, now, sync);
  Texts copies;
  for (int i = 0; i < 12; ++i) {
    const std::string& copy = copies.emplace_back(files.Keep("..", ".orm", "x"));
    fs::last_write_time(copy, fs::last_write_time(copy) - std::chrono::hours(20 - i));
  }
  files.Trim();
  for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(fs::exists(copies[i]), i >= 2) << i;
  EXPECT_EQ(RecoveredFiles("/proc/none", now, sync).Keep("t", ".orm", "x"), "");
}

}  // namespace
}  // namespace oriolemark

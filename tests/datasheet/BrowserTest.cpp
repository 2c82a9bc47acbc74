#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "datasheet/records/DataSheetFile.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

constexpr const char* kAsks = "Save the changes to the Data Sheet File";
constexpr const char* kNoSheet = "Please Open or Creat a Data Sheet First";

// The program with its Data Browser, linked to an instrument that stands still.
struct Browser : ProgramBench, testing::Test {
  Browser() {
    fs::remove_all(recovered);
    fs::remove(path);
    instrument.Turn(":STOP", "");
    module.main.Load();
    clock.Run(Milliseconds(10));
    module.main.mnuToolsConnect.Click();
    prompts.shown.clear();
  }
  void Add(int waves) {
    for (int i = 0; i < waves; ++i) browser.files.AddWaveItem();
    clock.Run(Milliseconds(10));
  }
  // Puts a sheet with this title and one wave into a file.
  void PutFile(const std::string& file, const std::string& title) {
    auto other = std::make_unique<DataSheet>();
    other->Title = title;
    other->WaveCount = 1;
    other->Waves[0].Name = "W of " + title;
    WriteDataSheet(file, *other, prompts, [](std::FILE*) { return true; });
  }
  frmWave& View(int slot) {
    return dynamic_cast<frmWave&>(*sheet.WaveViews[static_cast<std::size_t>(slot)]);
  }
  // The waves in their slots, each with its node's text and the caption of its open view.
  std::string Waves() {
    std::string all;
    for (int i = 0; i < sheet.WaveCount; ++i) {
      const WaveRecord& item = sheet.Waves[static_cast<std::size_t>(i)];
      all += item.Name + (tree.Text(item.TreeNode) == item.Name ? "" : "!");
      if (View(i).Loaded()) all += "(" + View(i).Caption() + View(i).Tag() + ")";
      all += " ";
    }
    return all;
  }
  void SelectWave(int slot) { tree.Select(sheet.Waves[static_cast<std::size_t>(slot)].TreeNode); }
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
  Texts Copies() const {
    Texts titles;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(recovered, none)) {
      auto other = std::make_unique<DataSheet>();
      TransferScratch scratch;
      VirtualClock time;
      RecordingPrompts silent(time);
      ReadDataSheet(entry.path(), *other, scratch, silent);
      titles.push_back(entry.path().filename().string() + ":" + other->Waves[0].Name);
    }
    return titles;
  }

  frmDataSheetTree& browser = module.browser;
  DataSheet& sheet = module.sheet;
  TreeView& tree = browser.DataSheetTree;
  const std::string path = testing::TempDir() + "browser" + std::to_string(getpid()) + ".orm";
};

TEST_F(Browser, AsksBeforeChangesWouldBeLostAndKeepsACopyOfThoseThatReachNoFile) {
  const std::string other = path + ".other";
  PutFile(other, "Other");
  struct Command {
    const char* name;
    std::function<void()> run;
    const char* after;  // the waves, unless cancelled
  };
  const Command commands[] = {
      {"New", [&] { browser.mnuNewDataSheet.Click(); }, ""},
      {"Open", [&] { browser.mnuOpenDataSheet.Click(); }, "W of Other(W of Other0) "},
      {"recent", [&] { browser.OpenDataSheet(other); }, "W of Other(W of Other0) "},
      {"remove", [&] { tree.Select(sheet.SheetNode), browser.mnuRemove.Click(); }, ""}};
  enum Saving { Fine, Cancelled, Failed };
  for (const Command& command : commands) {
    for (const auto answer : {MessageAnswer::Cancel, MessageAnswer::No, MessageAnswer::Yes}) {
      for (const Saving saving : {Fine, Cancelled, Failed}) {
        if (answer != MessageAnswer::Yes && saving != Fine) continue;
        SCOPED_TRACE(command.name + std::to_string(static_cast<int>(answer)) +
                     std::to_string(saving));
        sheet.Modified = false;
        browser.mnuNewDataSheet_Click();
        Add(1);
        sheet.FileName = saving == Failed ? "/" : "";
        prompts.paths = {other};
        if (answer == MessageAnswer::Yes && saving != Failed) {
          prompts.paths.push_front(saving == Fine ? path : "");
        }
        prompts.AnswerNext(answer);
        command.run();
        clock.Run(Milliseconds(10));
        Texts told{saving == Failed ? std::string(kAsks) + " /" : kAsks};
        if (saving == Failed) told.push_back("Is a directory");
        EXPECT_EQ(Told(), told);
        EXPECT_EQ(Waves(), answer == MessageAnswer::Cancel ? "Wave0(Wave00) " : command.after);
        EXPECT_EQ(fs::exists(path), answer == MessageAnswer::Yes && saving == Fine);
        EXPECT_EQ(Copies(),
                  saving == Fine ? Texts{} : Texts{"Untitle 2026-11-22 10.00.00.orm:Wave0"});
        fs::remove_all(recovered);
        fs::remove(path);
      }
    }
  }
}

TEST_F(Browser, ASaveThatFailedIsCopiedWhenTheSheetIsLeft) {
  Add(1);
  sheet.Title = "\xE4/\t";
  sheet.FileName = "/";
  browser.mnuSaveDataSheet_Click();
  EXPECT_FALSE(sheet.Modified);
  EXPECT_EQ(Copies(), Texts{});
  module.main.Close();
  EXPECT_EQ(Copies(), Texts{"ä__ 2026-11-22 10.00.00.orm:Wave0"});
}

TEST_F(Browser, AnOpenThatIsCancelledLeavesDeadNodesAndAFileThatIsNotOverwritten) {
  Add(1);
  prompts.paths = {path};
  browser.mnuSaveDataSheet_Click();
  const TreeNode dead = sheet.Waves[0].TreeNode;
  sheet.Modified = true;
  prompts.AnswerNext(MessageAnswer::No);
  browser.mnuOpenDataSheet.Click();
  EXPECT_EQ(Copies(), Texts{"Untitle 2026-11-22 10.00.00.orm:Wave0"}) << "No was for an Open";
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
  EXPECT_EQ(Waves(), "Wave0(Wave00) ");
  browser.mnuSaveDataSheet_Click();
  EXPECT_EQ(prompts.questions.size(), asked + 1) << "it has a name again";
}

TEST_F(Browser, TheMenuFitsTheSelectedNode) {
  Add(1);
  const std::string file = "&New Data Sheet|&Open Data Sheet|&Save Data Sheet|Sa&ve Data Sheet As|";
  const auto with = [&](const std::string& name) {
    return file + "&Add New|Re&name(" + name + ")|-|&Remove(" + name + ")|-|So&rted|";
  };
  EXPECT_EQ(Menu(), file + "&Add New|So&rted|") << "no node";
  tree.Select(sheet.RootNode);
  EXPECT_EQ(Menu(), file + "&Add New|So&rted|");
  tree.Select(sheet.SheetNode);
  EXPECT_EQ(Menu(), with("Untitle"));
  tree.EndLabelEdit(sheet.Waves[0].TreeNode, "R&D \xE4");
  SelectWave(0);
  EXPECT_EQ(Menu(), with("R&&D ä"));
  sheet.Modified = false;
  tree.Select(sheet.SheetNode);
  tree.KeyDown(kDeleteKey);
  EXPECT_EQ(Menu(),
            "&New Data Sheet|&Open Data Sheet|[&Save Data Sheet]|[Sa&ve Data Sheet As]|[&Add New]|"
            "[So&rted]|");
  module.main.mnuFileSaveDataSheet.Click();
  EXPECT_EQ(Told(), Texts{kNoSheet});
}

TEST_F(Browser, TheSortAndTheSheetOutliveThePaneAndTheSortTheSheet) {
  const auto reopen = [&] {
    module.main.tabDock.HidePane("DataSheet");
    module.main.tabDock.ShowPane("DataSheet");
  };
  browser.mnuSorted.Click();
  prompts.toSave = MessageAnswer::No;
  browser.mnuNewDataSheet_Click();
  Add(2);
  tree.EndLabelEdit(sheet.Waves[0].TreeNode, "Z");
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_EQ(tree.Text(tree.Children(sheet.SheetNode).front()), "Wave1");
    EXPECT_EQ(Waves(), "Z(Z0) Wave1(Wave11) ");
    reopen();
  }
  tree.Select(sheet.SheetNode);
  browser.mnuRemove.Click();
  EXPECT_FALSE(module.main.ToolButtons[10].Enabled());
  reopen();
  EXPECT_TRUE(module.main.ToolButtons[10].Enabled());
}

// Removes a wave while the one in slot 2 is read. The reading goes where its item is.
TEST_F(Browser, ARemovalMovesLaterItemsWithTheirViewsAndTheReadingThatRuns) {
  struct Row {
    int removed;
    const char* waves;
    int readInto;  // slot
  };
  for (const Row& row : {Row{0, "Wave1 Wave2(Wave21) Wave3(Wave32) ", 1},
                         Row{1, "Wave0(Wave00) Wave2(Wave21) Wave3(Wave32) ", 1},
                         Row{2, "Wave0(Wave00) Wave1 Wave3(Wave32) ", -1},
                         Row{3, "Wave0(Wave00) Wave1 Wave2(Wave22) ", 2}, Row{-1, "", -1}}) {
    SCOPED_TRACE(row.removed);
    sheet.Modified = false;
    browser.mnuNewDataSheet_Click();
    Add(4);
    for (WaveRecord& item : sheet.Waves) item.Count = -1;
    View(1).Unload();
    View(2).OptionCH.Select(0);
    At(400, [&] {
      ASSERT_TRUE(module.Transfer().TransferActive);
      prompts.toSave = MessageAnswer::No;
      if (row.removed < 0) return browser.mnuNewDataSheet_Click();
      SelectWave(row.removed);
      browser.mnuRemove.Click();
    });
    View(2).cmdRefresh.Click();
    clock.Run(Milliseconds(10));
    EXPECT_EQ(Waves(), row.waves);
    for (int i = 0; i < 4; ++i) {
      const WaveRecord& item = sheet.Waves[static_cast<std::size_t>(i)];
      EXPECT_EQ(item.HasData, i == row.readInto) << i;
      if (item.HasData) ExpectSamples(item, ":DATA:CHANNEL1");
    }
    for (int i = 0; i < sheet.WaveCount; ++i) EXPECT_TRUE(View(i).cmdRefresh.Enabled()) << i;
  }
}

TEST_F(Browser, TheDeleteKeyAsksBeforeItRemovesData) {
  Add(2);
  sheet.Waves[0].HasData = true;
  SelectWave(0);
  for (const auto answer : {MessageAnswer::No, MessageAnswer::Yes}) {
    prompts.AnswerNext(answer);
    tree.KeyDown(kDeleteKey);
    EXPECT_EQ(prompts.shown.back().buttons, MessageButtons::YesNo);
    EXPECT_EQ(Told(), Texts{"Remove Wave0?"});
    EXPECT_EQ(sheet.WaveCount, answer == MessageAnswer::No ? 2 : 1);
  }
  tree.KeyDown(kDeleteKey);
  EXPECT_EQ(Waves() + std::to_string(Told().size()), "0") << "nothing to lose, no question";
  EXPECT_EQ(tree.Selected(), sheet.SheetNode);
}

TEST_F(Browser, CloseAsksForTheSheetThenForTheControlFileWhateverTheFirstAnswer) {
  module.controlDocument.CtrlChanged = true;
  Add(1);
  for (const auto answer : {MessageAnswer::Cancel, MessageAnswer::No}) {
    prompts.AnswerNext(answer);
    prompts.AnswerNext(MessageAnswer::No);
    EXPECT_EQ(module.main.Close(), answer == MessageAnswer::No);
    EXPECT_EQ(Told(), (Texts{kAsks, "Save the changes to the Control File"}));
  }
}

TEST_F(Browser, FilesComeFromTheMenuTheRecentOnesTheStartAndTheDesktop) {
  const std::string settings = path + ".cfx";
  prompts.paths = {settings, path};
  Add(1);
  module.main.mnuFileSaveAll.Click();
  Texts asked;
  for (const FileQuestion& question : prompts.questions) asked.push_back(question.filter);
  EXPECT_EQ(asked, (Texts{"Control Files (*.cfx)|*.cfx", "Data Sheet Files (*.orm)|*.orm"}));
  EXPECT_FALSE(tree.Marked(sheet.SheetNode));
  ProgramBench start;
  start.store.values = store.values;
  start.Store("General", "StartupLoadSheet", "True");
  const auto waves = [&] { return std::exchange(start.module.sheet.WaveCount, 0); };
  start.At(300, [&] { EXPECT_EQ(waves(), 1) << "at the start"; });
  start.At(400, [&] {
    start.module.main.mnuRecentSheetRoot.submenu[0]->Click();
    EXPECT_EQ(waves(), 1);
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
  RecoveredFiles files(
      folder, [] { return "now"; }, [](std::FILE*) { return true; });
  for (int i = 0; i < 12; ++i) {
    const std::string copy = files.Keep("..", ".orm", std::to_string(i));
    fs::last_write_time(copy, fs::last_write_time(copy) - std::chrono::hours(20 - i));
  }
  files.Trim();
  std::set<std::string> kept;
  for (const auto& entry : fs::directory_iterator(folder)) {
    kept.insert(ReadFile(entry.path(), 9).bytes);
  }
  EXPECT_EQ(kept, (std::set<std::string>{"2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}));
  RecoveredFiles nowhere(
      "/proc/none", [] { return "now"; }, [](std::FILE*) { return true; });
  EXPECT_EQ(nowhere.Keep("t", ".orm", "x"), "");
}

}  // namespace
}  // namespace oriolemark

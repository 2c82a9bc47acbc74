#include <gtest/gtest.h>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

// What the instrument would send of a channel now, as bytes.
std::vector<int> BytesOf(tx5000::Instrument& instrument, const std::string& command) {
  const std::string block = instrument.Execute(command).value_or("");
  std::vector<int> bytes;
  for (std::size_t at = 0; at + 4 <= block.size(); at += 5) {
    bytes.push_back(std::stoi(block.substr(at + 2, 2), nullptr, 16));
  }
  return bytes;
}

struct ModeRow {
  const char* name;
  std::vector<std::pair<const char*, const char*>> hand;  // settings turned at the front panel
  int option;                                             // channel option of the view
  const char* first;                                      // block request of CH1Data
  int channels;
};

const ModeRow kModes[] = {
    {"plain CH1", {}, 0, ":DATA:CHANNEL1", 1},
    {"plain both", {}, 2, ":DATA:CHANNEL1", 3},
    {"envelope both", {{":ACQUIRE:ACQUISITION", "ENVELOPE"}}, 2, ":DATA:EnvelopeMax:CH1", 3},
    {"scan", {{":TimeBase:SCAN", "ON"}}, 0, ":DATA:CHANNEL1", 1},
    {"X-Y takes both channels", {{":TimeBase:FORMAT", "X-Y"}}, 0, ":DATA:CHANNEL1", 3},
};

TEST(WholeProgram, ConnectRefreshSeeInEveryMode) {
  for (const ModeRow& row : kModes) {
    SCOPED_TRACE(row.name);
    ProgramBench bench;
    for (const auto& [path, value] : row.hand) {
      ASSERT_TRUE(bench.instrument.Turn(path, value)) << path;
    }
    bench.module.settings.CH2Display = "ON";
    bench.clock.UserAfter(Ms(200), [&] { bench.module.main.mnuToolsConnect.Click(); });
    bench.clock.UserAfter(Ms(2000), [&] { bench.module.browser.files.AddWaveItem(); });
    bench.clock.UserAfter(Ms(3000), [&] {
      bench.wave->OptionCH.Select(row.option);
      // A stopped instrument holds its record, so that it can be asked again.
      bench.instrument.Turn(":STOP", "");
      bench.wave->cmdRefresh.Click();
    });
    bench.clock.UserAfter(Ms(60000), [&] { bench.module.main.Close(); });
    bench.module.Main();

    const WaveRecord& record = bench.module.sheet.Waves[0];
    EXPECT_TRUE(bench.prompts.shown.empty());
    EXPECT_TRUE(record.HasData);
    EXPECT_EQ(record.Channels, row.channels);
    const std::vector<int> bytes = BytesOf(bench.instrument, row.first);
    ASSERT_EQ(record.Count, static_cast<int>(bytes.size()));
    for (int i = 1; i <= record.Count; ++i) {
      const int byte = bytes[static_cast<std::size_t>(i - 1)];
      const bool clamped = record.IsYT;
      ASSERT_EQ(record.CH1Data[i], (clamped ? std::clamp(byte, 26, 225) : byte) - 26) << i;
    }
    EXPECT_EQ(bench.instrument.UnknownCommands(), 0);
    EXPECT_TRUE(bench.port.written.ends_with(":KEY:LOCK:ENABLE\r"));
  }
}

TEST(WholeProgram, AutoRefreshRestsForTheIntervalAfterEachReadingAndStopsAtAClick) {
  ProgramBench bench;
  bench.store.values[{"General", "StartupCheckHardware"}] = "-1";
  bench.store.values[{"Refresh", "Refresh Type"}] = "Auto";
  bench.store.values[{"Refresh", "Refresh Interval"}] = "1000";
  const auto readings = [&] {
    int count = 0;
    for (std::size_t at = 0; (at = bench.port.written.find("WinMemSize", at)) != std::string::npos;
         ++at) {
      ++count;
    }
    return count;
  };
  int whileRunning = 0;
  bench.clock.UserAfter(Ms(3000), [&] { bench.module.browser.files.AddWaveItem(); });
  bench.clock.UserAfter(Ms(4000), [&] { bench.wave->cmdRefresh.Click(); });
  bench.clock.UserAfter(Ms(34000), [&] {
    EXPECT_EQ(bench.wave->cmdRefresh.Face(), kStopFace);
    bench.wave->cmdRefresh.Click();
    EXPECT_EQ(bench.wave->cmdRefresh.Face(), kRefreshFace);
    whileRunning = readings();
  });
  bench.clock.UserAfter(Ms(60000), [&] { bench.module.main.Close(); });
  bench.module.Main();
  EXPECT_GT(whileRunning, 8);
  EXPECT_LT(whileRunning, 30) << "a pause stands between the readings";
  EXPECT_LE(readings(), whileRunning + 1);
}

struct RenameRow {
  const char* name;
  TreeNode (*node)(const DataSheet&);
  const char* shown;  // in the tree afterwards
  bool modified;
};

const RenameRow kRenames[] = {
    {"the root keeps its name", [](const DataSheet& sheet) { return sheet.RootNode; }, "Data Sheet",
     false},
    {"the sheet", [](const DataSheet& sheet) { return sheet.SheetNode; }, "A \\ B", true},
    {"a waveform", [](const DataSheet& sheet) { return sheet.Waves[0].TreeNode; }, "A \\ B", true},
};

TEST(WholeProgram, ALabelEditNamesTheItemAndItsView) {
  for (const RenameRow& row : kRenames) {
    SCOPED_TRACE(row.name);
    ProgramBench bench;
    bench.clock.UserAfter(Ms(100), [&] {
      TreeView& tree = bench.module.browser.DataSheetTree;
      bench.module.browser.files.AddWaveItem();
      bench.module.sheet.Modified = false;
      tree.Select(row.node(bench.module.sheet));
      tree.EndLabelEdit("A \\ B");
      EXPECT_EQ(tree.Text(tree.Selected()), row.shown);
      EXPECT_EQ(bench.module.sheet.Modified, row.modified);
      EXPECT_EQ(bench.wave->Caption(), bench.module.sheet.Waves[0].Name);
      EXPECT_EQ(bench.prompts.shown.size(), row.modified ? 0u : 1u);
      bench.module.main.Close();
    });
    bench.module.Main();
  }
}

struct CloseRow {
  const char* name;
  Ms at;  // after the click on cmdRefresh
};

const CloseRow kCloses[] = {
    {"before the transfer begins", Ms(50)},
    {"in the first query", Ms(150)},
    {"among the queries", Ms(700)},
    {"long after", Ms(20000)},
};

TEST(WholeProgram, ClosingInAnyWaitEndsInOrder) {
  for (const CloseRow& row : kCloses) {
    SCOPED_TRACE(row.name);
    ProgramBench bench;
    bench.port.side.SetBaud(9600);
    bench.store.values[{"General", "StartupCheckHardware"}] = "True";
    bench.store.values[{"Refresh", "Refresh Type"}] = "Auto";
    bench.clock.UserAfter(Ms(3000), [&] { bench.module.browser.files.AddWaveItem(); });
    bench.clock.UserAfter(Ms(4000), [&] { bench.wave->cmdRefresh.Click(); });
    bench.clock.UserAfter(Ms(4000) + row.at, [&] { bench.module.main.Close(); });
    bench.module.Main();
    EXPECT_FALSE(bench.clock.Stuck());
    EXPECT_FALSE(bench.module.main.Loaded());
    EXPECT_FALSE(bench.wave->Loaded());
    EXPECT_TRUE(bench.port.written.ends_with(":KEY:LOCK:ENABLE\r"));
    const auto baud = std::pair<std::string, std::string>("IO Settings", "BaudRate");
    EXPECT_EQ(bench.store.values[baud], "9600");
  }
}

TEST(WholeProgram, AViewClosedInItsOwnLoopEndsTheLoop) {
  ProgramBench bench;
  bench.store.values[{"General", "StartupCheckHardware"}] = "True";
  bench.store.values[{"Refresh", "Refresh Type"}] = "Auto";
  bench.clock.UserAfter(Ms(3000), [&] { bench.module.browser.files.AddWaveItem(); });
  bench.clock.UserAfter(Ms(4000), [&] { bench.wave->cmdRefresh.Click(); });
  bench.clock.UserAfter(Ms(5000), [&] { bench.wave->Unload(); });
  std::size_t sent = 0;
  bench.clock.UserAfter(Ms(30000), [&] { sent = bench.port.written.size(); });
  bench.clock.UserAfter(Ms(40000), [&] {
    EXPECT_EQ(bench.port.written.size(), sent) << "no reading after the view has gone";
    bench.module.browser.DataSheetTree.Select(bench.module.sheet.Waves[0].TreeNode);
    bench.module.browser.DataSheetTree.DoubleClick();
    EXPECT_TRUE(bench.wave->Visible());
  });
  bench.clock.UserAfter(Ms(50000), [&] { bench.module.main.Close(); });
  bench.module.Main();
  EXPECT_FALSE(bench.clock.Stuck());
}

TEST(WholeProgram, ItemsAreLimitedAndTheAddButtonsFollowTheSheet) {
  ProgramBench bench;
  bench.clock.UserAfter(Ms(100), [&] {
    frmMain& main = bench.module.main;
    for (int i = 0; i < 17; ++i) main.ToolButtons[11].Click();
    EXPECT_EQ(bench.module.sheet.MeasureCount, 16);
    ASSERT_EQ(bench.prompts.shown.size(), 1u);
    EXPECT_EQ(bench.prompts.shown[0], (Message{.text = "Exceed maximum file numbers limit",
                                               .icon = MessageIcon::Exclamation}));
    bench.module.browser.DataSheetTree.Remove(bench.module.sheet.SheetNode);
    main.ToolButtons[10].Click();
    EXPECT_EQ(bench.prompts.shown.back(),
              (Message{.text = "Please Open or Creat a Data Sheet First",
                       .icon = MessageIcon::Exclamation}));
    EXPECT_FALSE(main.ToolButtons[12].Enabled());
    bench.module.main.Close();
  });
  bench.module.Main();
}

}  // namespace
}  // namespace oriolemark

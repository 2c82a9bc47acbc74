#include <gtest/gtest.h>

#include "datasheet/SampleTable.h"
#include "support/FileFolder.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

// The program linked to an instrument that stands still, with two open tables of samples.
struct DataViews : ProgramBench, FileFolder, testing::Test {
  DataViews() {
    instrument.Turn(":STOP", "");
    module.main.Load();
    clock.Run(Milliseconds(10));
    module.main.mnuToolsConnect.Click();
    for (int i = 0; i < 2; ++i) module.browser.files.AddDataItem();
    clock.Run(Milliseconds(10));
    prompts.toSave = MessageAnswer::No;
    prompts.shown.clear();
  }
  frmData& View(std::size_t slot) { return dynamic_cast<frmData&>(*sheet.DataViews[slot]); }
  DataRecord& Record() { return sheet.Datas[0]; }

  DataSheet& sheet = module.sheet;
};

TEST(SampleTable, EachSampleHasItsVoltageAndItsTime) {
  // Count, sample, token, volts and offset, seconds a division and delay, and the two texts.
  for (const auto& row : Rows(R"(
1200 | 600 | 0x7D | 1 | 0 | 0.001 | 0.0005 | 0.00E+00 | 5.0000E-04
1200 | 1 | 0x00 | 1 | 0 | 0.001 | 0 | 5.00E+00 | -5.9900E-03
1199 | 1199 | - | 1 | 0 | 0.001 | 0 | 5.00E+00 | 2.9975E-03
1201 | 1 | FF | 2 | 0 | 0.001 | 0 | -1.04E+01 | -2.9975E-03
17000 | 17000 | 7D | 2 | 0.5 | 5e-9 | 0 | -5.00E-01 | 2.1250E-07
)")) {
    SCOPED_TRACE(testing::PrintToString(row));
    DataRecord record;
    record.Samples.resize(kLastSample + 1);
    record.Count = std::stoi(row[0]);
    const int sample = std::stoi(row[1]);
    record.Samples[static_cast<std::size_t>(sample)] = row[2];
    record.VoltRange = std::stod(row[3]);
    record.VoltOffset = std::stod(row[4]);
    record.TimeRange = std::stod(row[5]);
    record.TriggerDelay = std::stod(row[6]);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(SampleText(record, sample, i), row[i == 0 ? 1 : 6 + i]);
  }
}

TEST_F(DataViews, TheTableHasTheRowsThatTheRecordHolds) {
  // The count, the tokens that there are, index 0 included, and the rows.
  DataRecord& record = Record();
  ListView& table = View(0).MeasureView;
  EXPECT_EQ(table.Count(), 1000) << "blank";
  EXPECT_EQ(table.Text(999, 0), "");
  record.HasData = true;
  for (const auto& row : Rows("-1 | 17001 | 0 || 0 | 17001 | 0 || 3 | 17001 | 3 || 5 | 3 | 2 ||"
                              " 17001 | 17001 | 17000 || 5 | 0 | 0 || 2147483647 | 17001 | 17000 ||"
                              " 17001 | 20000 | 17000")) {
    SCOPED_TRACE(row[0]);
    record.Count = std::stoi(row[0]);
    record.Samples.assign(std::stoul(row[1]), "0x7D");
    const int expected = std::stoi(row[2]);
    View(0).LoadData();
    EXPECT_EQ(table.Count(), expected);
    EXPECT_EQ(table.Text(expected - 1, 0), expected > 0 ? std::to_string(expected) : "");
    EXPECT_EQ(table.Text(expected, 1) + table.Text(-1, 1) + SampleText(record, 0, 1), "");
    record.Samples.clear();
    EXPECT_EQ(table.Text(0, 1), "") << "the record has changed under the table";
  }
  table.NoteWidth(5600);
  EXPECT_EQ(table.ColumnWidths(), (std::vector<double>{1000, 2000, 2000}));
  table.NoteWidth(300);
  EXPECT_EQ(table.ColumnWidths(), std::vector<double>(3, 0));
}

TEST_F(DataViews, AnExportAndACopyHaveTheRowsOfTheTable) {
  const std::string lines = "Tavik Technologies -[Data]|||||||NO.\tVoltage\tTime||";
  const std::string row = " 2 \t0.00E+00\t5.0000E-04|";
  DataRecord& record = Record();
  record.Title = "CH1 of before";
  record.Count = 2;
  record.Samples = {"", "0x4B", "0x7D"};
  record.VoltRange = 1;
  record.TimeRange = 0.1;
  const std::string path = folder + "/table.xls";
  for (const bool hasData : {false, true}) {
    record.HasData = hasData;
    View(0).LoadData();
    prompts.paths = {path};
    View(0).cmdExport.Click();
    std::string expected = lines;
    if (hasData) {
      expected.insert(expected.find("|NO.") - 2, record.Title);
      expected += " 1 \t2.00E+00\t0.0000E+00|" + row;
    }
    EXPECT_EQ(Bytes(path), Filled(expected, '|', "\r\n"));
  }
  ListView& table = View(0).MeasureView;
  table.Select({{1, 7}, {-1, -1}, {1, 1}});
  EXPECT_EQ(table.SelectedText(), Filled(row, '|', "\r\n")) << "inside the table and once";
  record.HasData = false;
  View(0).LoadData();
  table.SelectAll();
  EXPECT_EQ(table.SelectedText(), "") << "a blank table";

  View(0).cmdExport.Click();
  EXPECT_TRUE(prompts.shown.empty()) << "cancelled";
  prompts.paths = {folder};
  View(0).cmdExport.Click();
  EXPECT_EQ(prompts.shown, std::vector<Message>{Message(
                               {.systemText = "Is a directory", .icon = MessageIcon::Critical})});
  EXPECT_EQ(prompts.questions.back().title + prompts.questions.back().filter,
            "Export FileMicrosoft Excel Files (*.xls)|*.xls|Text Files (*.txt)|*.txt|"
            "All Files (*.*)|*.*");
}

TEST_F(DataViews, ARefreshReadsTheChannelThatIsSelectedAndNothingWithBothOff) {
  // The channels that are on, whether the selection is taken away, and the channel that is read.
  for (const auto& row : Rows("ON | ON | no | CH1 || ON | ON | yes | CH2 || OFF | ON | no | CH2 ||"
                              " ON | OFF | no | CH1 || OFF | OFF | no | -")) {
    SCOPED_TRACE(testing::PrintToString(row));
    module.settings.CH1Display = row[0];
    module.settings.CH2Display = row[1];
    View(0).OptionCH.Select(OptionGroup::kNone);
    clock.Run(Milliseconds(500));
    if (row[2] == "yes") View(0).OptionCH.Select(OptionGroup::kNone);
    DataRecord& record = Record();
    record.HasData = sheet.Modified = false;
    View(0).KeyDown(116, 0);
    const bool reads = !row[3].empty();
    EXPECT_EQ(Bits(record.HasData, sheet.Modified, prompts.shown.empty()), reads ? "111" : "001");
    if (!reads) continue;
    EXPECT_TRUE(record.Title.starts_with(row[3] + " 1.00V")) << record.Title;
    const auto block = Split(*instrument.Execute(":DATA:CHANNEL" + row[3].substr(2)), ' ');
    ASSERT_EQ(View(0).MeasureView.Count(), static_cast<int>(block.size()) - 1);
    EXPECT_TRUE(std::equal(block.begin(), block.end() - 1, record.Samples.begin() + 1));
    EXPECT_EQ(std::pair(record.VoltRange, record.TimeRange), std::pair(1.0, 0.0002));
  }
  EXPECT_FALSE(module.Transfer().TransferActive);
}

// While the item in slot 1 is read.
TEST_F(DataViews, AReadingFollowsItsItemAndOutlivesItsWindow) {
  // What happens, which of the slots have data then, and how each open table looks.
  using Row = std::tuple<const char*, std::function<void()>, const char*, const char*>;
  const auto remove = [this](std::size_t slot) {
    return [this, slot] {
      module.browser.DataSheetTree.Select(sheet.Datas[slot].TreeNode);
      module.browser.mnuRemove.Click();
    };
  };
  const Row rows[] = {{"nothing", [] {}, "01", "blank full "},
                      {"the item before it is removed", remove(0), "10", "full "},
                      {"it is removed", remove(1), "00", "blank "},
                      {"a new sheet", [this] { module.browser.mnuNewDataSheet_Click(); }, "00", ""},
                      {"its window is closed", [this] { View(1).Unload(); }, "01", "blank "}};
  for (const auto& [what, action, filled, looks] : rows) {
    SCOPED_TRACE(what);
    module.browser.mnuNewDataSheet_Click();
    for (int i = 0; i < 2; ++i) module.browser.files.AddDataItem();
    clock.Run(Milliseconds(10));
    View(1).OptionCH.Select(0);
    At(400, action);
    View(1).cmdRefresh.Click();
    clock.Run(Milliseconds(10));
    EXPECT_EQ(Bits(sheet.Datas[0].HasData, sheet.Datas[1].HasData), filled);
    std::string tables;
    for (std::size_t i = 0; i < 2; ++i) {
      if (!View(i).Loaded()) continue;
      tables += View(i).MeasureView.Count() == sheet.Datas[i].Count ? "full " : "blank ";
    }
    EXPECT_EQ(tables, looks);
    for (DataRecord& item : sheet.Datas) item.Count = -1;
  }
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "datasheet/SampleTable.h"
#include "support/FileFolder.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

// With the open table of the first item.
struct DataViews : LinkedBench, FileFolder, testing::Test {
  frmData& Open() {
    Add(ItemKind::Data, 1);
    return dynamic_cast<frmData&>(*sheet.DataViews[0]);
  }

  DataRecord& record = sheet.Datas[0];
  frmData& view = Open();
  ListView& table = view.MeasureView;
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
  record.HasData = true;
  for (const auto& row : Rows("-1 | 17001 | 0 || 0 | 17001 | 0 || 3 | 17001 | 3 || 5 | 3 | 2 ||"
                              " 17001 | 17001 | 17000 || 5 | 0 | 0 || 2147483647 | 17001 | 17000 ||"
                              " 17001 | 20000 | 17000")) {
    SCOPED_TRACE(row[0]);
    record.Count = std::stoi(row[0]);
    record.Samples.assign(std::stoul(row[1]), "0x7D");
    const int expected = std::stoi(row[2]);
    view.LoadData();
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

TEST_F(DataViews, ABlankTableExportsItsHeadAndACopyHasTheRowsOfTheTable) {
  const std::string path = folder + "/table.xls";
  record.Title = "CH1 of before";
  prompts.paths = {path, folder};
  for (int i = 0; i < 3; ++i) view.cmdExport.Click();
  EXPECT_EQ(Bytes(path),
            Filled("Tavik Technologies -[Data]|||||||NO.\tVoltage\tTime||", '|', "\r\n"));
  EXPECT_EQ(prompts.shown, std::vector<Message>{Message(
                               {.systemText = "Is a directory", .icon = MessageIcon::Critical})})
      << "the last one was cancelled";
  EXPECT_EQ(prompts.questions.back().title + prompts.questions.back().filter,
            "Export FileMicrosoft Excel Files (*.xls)|*.xls|Text Files (*.txt)|*.txt|"
            "All Files (*.*)|*.*");
  table.SelectAll();
  EXPECT_EQ(table.SelectedText(), "") << "blank";
  record.HasData = true;
  record.Count = 2;
  record.Samples = {"", "0x4B", "0x7D"};
  record.VoltRange = 1;
  record.TimeRange = 0.1;
  view.LoadData();
  table.Select({{1, 7}, {-1, -1}, {1, 1}});
  EXPECT_EQ(table.SelectedText(), " 2 \t0.00E+00\t5.0000E-04\r\n") << "inside it and once";
}

TEST_F(DataViews, ARefreshReadsTheChannelThatIsSelectedAndNothingWithBothOff) {
  instrument.Turn(":CHANNEL2:RANGE", "2.00V");
  // The channels that are on, whether the selection is taken away, the channel that is read with
  // its volts a division, and its offset.
  for (const auto& row : Rows(R"(
ON | ON | no | CH1 1.00V | 2 || ON | ON | yes | CH2 2.00V | -6 || OFF | ON | no | CH2 2.00V | -6
ON | OFF | no | CH1 1.00V | 2 || OFF | OFF | no | - | -
)")) {
    SCOPED_TRACE(testing::PrintToString(row));
    module.settings.CH1Display = row[0];
    module.settings.CH2Display = row[1];
    view.OptionCH.Select(OptionGroup::kNone);
    clock.Run(Milliseconds(500));
    if (row[2] == "yes") view.OptionCH.Select(OptionGroup::kNone);
    record.HasData = sheet.Modified = false;
    view.KeyDown(kF5Key, kShiftHeld);
    EXPECT_FALSE(record.HasData) << "a key of its own";
    view.KeyDown(kF5Key, 0);
    const bool reads = !row[3].empty();
    EXPECT_EQ(Bits(record.HasData, sheet.Modified, prompts.shown.empty()), reads ? "111" : "001");
    if (!reads) continue;
    EXPECT_TRUE(record.Title.starts_with(row[3])) << record.Title;
    EXPECT_EQ(record.VoltOffset, std::stod(row[4]));
    const auto block = Split(*instrument.Execute(":DATA:CHANNEL" + row[3].substr(2, 1)), ' ');
    ASSERT_EQ(table.Count(), static_cast<int>(block.size()) - 1);
    EXPECT_TRUE(std::equal(block.begin(), block.end() - 1, record.Samples.begin() + 1));
  }
  EXPECT_FALSE(module.Transfer().TransferActive);
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "measure/ExportMeasure.h"
#include "support/FileFolder.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

TEST(Verdict, IsInclusiveAtBothLimitsAndFailsWhatIsNoNumber) {
  // Quantity, under, over, text, verdict.
  for (const auto& row : Rows(R"(
Vpp | 1 | 2 | 1.000V | Pass || Vpp | 1 | 2 | 2.000V | Pass || Vpp | 1 | 2 | 2000.0 mV | Pass
Vpp | 1 | 2 | 0.999V | Fail [Under Limit] || Vpp | 1 | 2 | 2.001V | Fail [Over Limit]
Vpp | 1 | 2 | ***** | Fail || Vpp | 1 | 2 | - | Fail || Vpp | 1 | 2 | 1.5 | Fail
Vpp | 1 | 2 | >1.5V | Fail || Vpp | 2 | 1 | 1.5V | Fail [Under Limit]
Vpp | 0.0001 | 1 | 100uV | Pass || Vmin | -2 | -1 | -1.5V | Pass || Vamp | 1 | 2 | 1.5V | Pass
Vover | 0.25 | 0.25 | 25.0% | Pass || +Duty | 0.4 | 0.6 | % | Fail [Under Limit]
Frequency | 1000 | 2000 | 1.5kHz | Pass || Frequency | 1000 | 2000 | 1.5MHz | Fail [Over Limit]
Rise Time | 0.000001 | 0.000002 | 1us | Pass || -Duty | 0.4 | 0.6 | 0.5V | Fail
)")) {
    const MeasureValue value{row[3], true, std::stod(row[2]), std::stod(row[1]), {}};
    EXPECT_EQ(Judge(value, QuantityNamed(row[0])->family), row[4]) << row[0] << " " << row[3];
  }
  EXPECT_EQ(Judge({"1V", false, 2, 1, {}}, QuantityNamed("Vpp")->family), "");
}

// The captions of the list and the names in the file, with the entry and the picture of each.
const auto kListed = Rows(R"(
Vpp | Vpp | 0 | 1 || Vmax | Vmax | 1 | 2 || Vmin | Vmin | 2 | 3 || Vavg | Vavg | 3 | 4
Vamp | Vamp | 15 | 5 || Vtop | Vtop | 4 | 6 || Vbase | Vbase | 5 | 7 || Vrms | Vrms | 6 | 8
Vover | Vover | 13 | 9 || Vpre | Vpre | 14 | 10 || Frequency | Frequency | 7 | 11
Rise Time | Rise Time | 8 | 13 || Fall Time | Fall Time | 9 | 14 || Period | Period | 10 | 12
+Pulse Width | Pulse Width+ | 11 | 15 || -Pulse Width | Pulse Width- | 12 | 16
+Duty | Duty+ | 16 | 17 || -Duty | Duty- | 17 | 18
)");

struct Measures : LinkedBench, testing::Test {
  Measures() { Add(ItemKind::Measure, 1); }
  MeasureRecord& Record(std::size_t slot = 0) { return sheet.Measures[slot]; }
  frmMeasure& View(std::size_t slot = 0) {
    return dynamic_cast<frmMeasure&>(*sheet.MeasureViews[slot]);
  }
  // The first item holds values, and these are tested.
  void Fill(std::initializer_list<std::size_t> tested) {
    Record().HasData = true;
    for (MeasureValue& value : Record().Values) value.Text = "1.500 V", value.Enabled = false;
    for (const std::size_t index : tested) Record().Values[index].Enabled = true;
    View().ShowReading();
    sheet.Modified = false;
  }
  // Works the limits dialog of the first view and looks at it when `hand` has ended.
  void Edit(std::function<void()> hand) {
    At(2, [this, act = std::move(hand)] {
      ASSERT_TRUE(limits.Visible() && limits.Modal());
      act();
      limits.Unload();
    });
    View().cmdPassFailed.Click();
  }
  std::string Shown(int row) {
    const ListView& list = View().MeasureView;
    return list.Text(row, 0) + "|" + list.Text(row, 1) + "|" + list.Text(row, 2);
  }

  frmPassFailed& limits = module.passFailed;
};

TEST_F(Measures, ShowValuesWithVerdictsAndPictures) {
  EXPECT_EQ(Bits(Record().ViewOpen, sheet.Modified), "11");
  View().MeasureView.NoteWidth(3200);
  EXPECT_EQ(View().MeasureView.ColumnWidths(), (std::vector<double>{1000, 1000, 1000}));
  Record().Values[0] = {"", true, 100, 0, ""};
  Record().Values[7] = {"", true, 1, 0, ""};
  port.lies[":MEASURE:Vmin"] = "Vmin=-1.6V\n";
  View().MeasureView.Select({{2, 3}});
  View().cmdRefresh.Click();
  for (std::size_t row = 0; row < kListed.size(); ++row) {
    const auto& cells = kListed[row];
    const MeasureValue& value = Record().Values[std::stoul(cells[2])];
    const char* verdict = row == 0 ? "Pass" : row == 10 ? "Fail [Over Limit]" : "";
    const int at = static_cast<int>(row);
    EXPECT_EQ(Shown(at), cells[0] + "|" + value.Text + "|" + verdict);
    EXPECT_EQ(value.Verdict, verdict);
    EXPECT_EQ(View().MeasureView.Picture(at, 0), std::stoi(cells[3]));
    EXPECT_EQ(View().MeasureView.Picture(at, 2), row == 0 ? 19 : row == 10 ? 20 : 0);
  }
  EXPECT_EQ(View().MeasureView.SelectedText().substr(0, 12), "Vmin\t-1.6V\t\r") << "still marked";
}

TEST_F(Measures, AreExportedByNameBeforeTheFirstReading) {
  FileFolder files;
  const std::string path = files.folder + "/m.xls";
  prompts.paths = {path};
  for (MeasureValue& value : Record().Values) value.Text = "of another item";
  View().cmdExport.Click();
  std::string empty = "Tavik Technologies -[Measure]\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
  for (const auto& row : kListed) empty += row[1] + "\t\t\r\n";
  EXPECT_EQ(FileFolder::Bytes(path), empty);
}

TEST_F(Measures, ATypedLimitIsTakenWithItsUnitOrRefused) {
  Fill({0, 7, 13});
  // The quantity, what is typed as its lower limit, the unit chosen then, the limit, which was 0.1
  // or 1 MHz, and whether there was a message, which empties the box.
  for (const auto& row : Rows(R"(
Vpp | 5.000 | V | 5 | - || Vpp | 5 | mV | 0.005 | - || Vpp | 1.5 | - | 0.0015 | -
Vpp | - | - | 0.1 | - || Vpp | a | - | 0.1 | message || Vpp | 1. | V | 0.001 | -
Vpp | ~ | - | 0.1 | - || Vpp | ~a | - | 0.1 | message || Vpp | ~20 | V | -20 | -
Vpp | ~~5 | V | 0 | - || Vpp | 1e1 | V | 10 | - || Vpp | ???.? | - | 0.1 | message
Vover | 25.000 | % | 0.25 | - || Frequency | 2 | kHz | 2000 | - || Frequency | 2k | - | 1e6 | message
)")) {
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    for (MeasureValue& value : Record().Values) value.Under = 0.1;
    Record().Values[7].Under = 1e6;
    Edit([&] {
      limits.MTypeCombo.SetText(row[0]);
      limits.MTypeCombo.SetListIndex(limits.MTypeCombo.ListIndex());
      limits.UnderNum.SetText(Filled(row[1], '~', "-"));
      limits.UnderUnit.SetText(row[2]);
      limits.UnderUnit.SetListIndex(limits.UnderUnit.ListIndex());
      EXPECT_EQ(limits.UnderNum.Text() == "", row[4] == "message" || row[1].empty());
      limits.OKButton.Click();
    });
    EXPECT_DOUBLE_EQ(Record().Values[QuantityNamed(row[0])->index].Under, std::stod(row[3]));
    EXPECT_EQ(std::exchange(prompts.shown, {}),
              std::vector<Message>(row[4] == "message", Critical("Invalid Numeric")));
  }
}

// Whether each control of the limits is enabled, and their texts and units.
std::string LimitsShown(const frmPassFailed& at) {
  return Bits(at.UnderNum.Enabled(), at.UnderUnit.Enabled(), at.UnderPic.Enabled(),
              at.OverNum.Enabled(), at.OverUnit.Enabled(), at.OverPic.Enabled()) +
         " " + at.UnderNum.Text() + at.UnderUnit.Text() + " " + at.OverNum.Text() +
         at.OverUnit.Text();
}

TEST_F(Measures, TheLimitsDialogWorksOnACopyThatOkAloneWritesBack) {
  for (const bool ok : {false, true}) {
    Fill({1});
    Record().Values[7].Under = 1e13;
    Edit([&] {
      EXPECT_EQ(limits.Caption(), "Pass & Fail Setting [Measure0]");
      EXPECT_EQ(LimitsShown(limits), "000000 100.000mV 200.000mV");
      limits.EnabledChk.SetValue(true);
      limits.UnderNum.SetText("300");
      limits.MTypeCombo.SetListIndex(1);
      EXPECT_EQ(LimitsShown(limits), "111111 100.000mV 200.000mV");
      limits.EnabledChk.SetValue(false);
      for (const auto& [index, shown] : {std::pair(10, "000000 ???.?Hz 2.000MHz"),
                                         {17, "000000 40.000% 60.000%"},
                                         {0, "111111 300.000mV 200.000mV"}}) {
        limits.MTypeCombo.SetListIndex(index);
        EXPECT_EQ(LimitsShown(limits), shown);
      }
      EXPECT_TRUE(prompts.shown.empty());
      (ok ? limits.OKButton : limits.CancelButton).Click();
    });
    const auto& values = Record().Values;
    EXPECT_EQ(Bits(values[0].Enabled, values[1].Enabled, sheet.Modified), ok ? "101" : "010");
    EXPECT_DOUBLE_EQ(values[0].Under, ok ? 0.3 : 0.1) << "above the upper one";
    EXPECT_EQ(Shown(0), ok ? "Vpp|1.500 V|Fail [Over Limit]" : "Vpp|1.500 V|");
  }
}

TEST_F(Measures, TheLimitsFollowAnItemThatMovesAndGoWithIt) {
  Add(ItemKind::Measure, 1);
  for (const auto& [edited, typed] : {std::pair(1u, "700"), {0u, "900"}}) {
    At(2, [&, over = typed] {
      limits.EnabledChk.SetValue(true);
      limits.OverNum.SetText(over);
      module.browser.files.Remove(ItemKind::Measure, 0);
      limits.OKButton.Click();
    });
    View(edited).cmdPassFailed.Click();
    EXPECT_DOUBLE_EQ(Record().Values[0].Over, 0.7) << "of the one that moved to slot 0";
  }
}

}  // namespace
}  // namespace oriolemark

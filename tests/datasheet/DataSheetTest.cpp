#include <gtest/gtest.h>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

struct DataSheets : ProgramBench, testing::Test {
  DataSheets() {
    module.main.Load();
    prompts.toSave = MessageAnswer::No;
  }

  DataSheet& sheet = module.sheet;
  TreeView& tree = module.browser.DataSheetTree;
  // They add a wave, a measure and a data item.
  std::array<Button*, 3> tools{&module.main.ToolButtons[10], &module.main.ToolButtons[11],
                               &module.main.ToolButtons[12]};
};

TEST_F(DataSheets, SixteenItemsOfAKindFitASheetAndNoneWithoutOne) {
  for (Button* tool : tools) {
    for (int item = 0; item < 17; ++item) tool->Click();
  }
  EXPECT_EQ(sheet.WaveCount + sheet.MeasureCount + sheet.DataCount, 3 * 16);
  tree.Remove(sheet.SheetNode);
  module.browser.files.AddDataItem();
  std::vector<Message> told(3, Warning("Exceed maximum file numbers limit"));
  told.push_back(Warning("Please Open or Creat a Data Sheet First"));
  EXPECT_EQ(prompts.shown, told);
  for (const Button* tool : tools) EXPECT_FALSE(tool->Enabled());
}

TEST_F(DataSheets, ANewSheetNumbersFromZeroAndItsMeasuresKeepThreeTestSwitches) {
  for (const std::string switches : {"000000000000000000", "000000000000000111"}) {
    module.browser.mnuNewDataSheet_Click();
    for (Button* tool : tools) tool->Click();
    std::string names, switched;
    for (const TreeNode node : tree.Children(sheet.SheetNode)) names += tree.Text(node) + " ";
    EXPECT_EQ(names, "Wave0 Measure0 Data0 ");
    for (MeasureValue& value : sheet.Measures[0].Values) {
      switched += value.Enabled ? '1' : '0';
      value.Enabled = true;
    }
    EXPECT_EQ(switched, switches) << "the last three keep what the slot held";
  }
}

TEST_F(DataSheets, ALabelEditNamesTheItemAndItsViewButNotTheRoot) {
  module.browser.files.AddWaveItem();
  sheet.Modified = false;
  for (const bool isRoot : {true, false}) {
    const TreeNode node = isRoot ? sheet.RootNode : sheet.Waves[0].TreeNode;
    tree.Select(sheet.SheetNode);
    tree.EndLabelEdit(node, "A \\ B");
    EXPECT_EQ(tree.Text(node), isRoot ? "Data Sheet" : "A \\ B");
    EXPECT_EQ(tree.Selected(), sheet.SheetNode) << "what the click that ended the edit was for";
    EXPECT_EQ(sheet.Waves[0].Name, isRoot ? "Wave0" : "A \\ B");
    EXPECT_EQ(wave->Caption(), sheet.Waves[0].Name);
    EXPECT_EQ(sheet.Modified, !isRoot);
    EXPECT_EQ(Told().size(), isRoot ? 1u : 0u);
  }
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

// Methods, the leaves of the Trigger group, and these after Set Trig to 50%.
const char* const kTriggers = R"(
EDGE | Method [EDGE], Slope [RISING], Source [CH1], Mode [AUTO], Coupling [DC], Level [0.00div]
  | Method [EDGE], Slope [RISING], Source [CH1], Mode [AUTO], Coupling [DC], Level [1.00div]
PULSE | Method [PULSE], Source [CH1], Pulse mode [+LESS THAN],
  Pulse width [1us], Mode [AUTO], Coupling [DC], Level [0.00div]
  | Method [PULSE], Source [CH1], Pulse mode [+LESS THAN],
  Pulse width [1us], Level [1.00div], Coupling [DC], Level [0.00div]
VIDEO | Method [VIDEO], Source [CH1], Polarity [POSITIVE], Sync [LINE], Line number [1],
  Video Standard []
  | Method [VIDEO], Source [CH1], Polarity [POSITIVE], Sync [LINE], Line number [1], Level [1.00div]
- | Method [], Source [CH1] | Method [], Source [CH1]
)";

TEST(CtrlTree, NewDocumentShowsEachGroupInItsOrderAndAReopenedPaneKeepsTheDocument) {
  ControllerBench bench;
  const auto groups = Rows(R"(
Running Control | Run|Stop [RUN], Auto Set, Set Trig to 50%, Force Trigger
CH1 | Display [ON], Volt/Div [1.00V], Offset [0.00div], Coupling [AC], BW Limit [OFF], Probe [1X]
CH2 | Display [OFF], Volt/Div [1.00V], Offset [0.00div], Coupling [AC], BW Limit [OFF], Probe [1X]
Time Base | Time/Div [10.00us], Delay [0.0000s], Holdoff [100ns], Memory Size [4000], Format [Y-T]
Trigger | Method [EDGE], Slope [RISING], Source [CH1], Mode [AUTO], Coupling [DC], Level [0.00div]
Acquire | Acquisition [NORMAL], Sampling Mode [EQU_TIME], Intensity [3%],
  Averages [16], Anti-aliasing [OFF]
Display | Type [VECT], Persist [OFF], Grid [FULL]
Virtual Panel | -
)");
  const TreeNode root = bench.tree.First();
  EXPECT_EQ(bench.tree.Text(root), "TX5000");
  EXPECT_EQ(bench.tree.Image(root), 1);
  ASSERT_EQ(bench.tree.Children(root).size(), groups.size());
  for (std::size_t i = 0; i < groups.size(); ++i) {
    const TreeNode group = bench.tree.Children(root)[i];
    EXPECT_EQ(bench.tree.Text(group), groups[i][0]);
    EXPECT_EQ(bench.tree.Image(group), i == 7 ? 6 : 2);
    EXPECT_EQ(bench.tree.Expanded(group), i == 0);
    EXPECT_EQ(bench.Joined(groups[i][0]), groups[i][1]);
    for (const TreeNode leaf : bench.tree.Children(group)) {
      EXPECT_EQ(bench.tree.Image(leaf), bench.tree.Text(leaf).ends_with(']') ? 3 : 4);
    }
  }
  EXPECT_FALSE(bench.document.CtrlChanged);

  CtrlSettings settings = bench.settings = Named("+<v> \\");
  bench.document.CtrlChanged = true;
  bench.controller.Unload();
  bench.controller.Load();
  EXPECT_TRUE(bench.document.CtrlChanged);
  EXPECT_EQ(Listed(bench.settings), Listed(settings));
  EXPECT_EQ(bench.tree.Text(bench.Node("CH2", "Volt/Div")), "Volt/Div [+<v> \\CH2VoltDiv]");
  EXPECT_TRUE(bench.tree.Expanded(bench.Node("Running Control")));
  bench.document.CtrlChanged = false;
  bench.controller.mnuNewCtrl.Click();
  settings = CtrlSettings();
  Set(settings, "MemOffset=+<v> \\MemOffset;VideoStandard=+<v> \\VideoStandard");
  EXPECT_EQ(Listed(bench.settings), Listed(settings)) << "what has no default stays";
}

TEST(CtrlTree, TriggerGroupFollowsTheMethodAndTrig50WritesItsFixedPlace) {
  for (const auto& row : Rows(kTriggers)) {
    SCOPED_TRACE(row[0]);
    ControllerBench bench;
    bench.Connect();
    bench.port.lies[":TRIGGER:LEVEL:?"] = "1.00div\n";
    bench.settings.TrigMethod = row[0];
    bench.controller.BuildCtrlTree();
    EXPECT_EQ(bench.Joined("Trigger"), row[1]);
    bench.DoubleClick(bench.Node("Running Control", "Set Trig to 50%"));
    EXPECT_EQ(bench.Sent(), ":TRIG%50;:TRIGGER:LEVEL:?");
    EXPECT_EQ(bench.Joined("Trigger"), row[2]);
    EXPECT_EQ(bench.settings.TrigLevel + bench.settings.TrigMode, "1.00divAUTO");
    EXPECT_FALSE(bench.document.CtrlChanged);
    bench.controller.BuildCtrlTree();
    static const std::regex kOldLevel("0\\.00div");
    EXPECT_EQ(bench.Joined("Trigger"), std::regex_replace(row[1], kOldLevel, "1.00div"));
  }
}

TEST(TreeView, ATreeBuiltAnewIsEnteredWhereItWasLeft) {
  TreeView tree;
  TreeNode group = kNoNode, row = kNoNode;
  const auto build = [&](const std::string& value, bool expanded, const std::string& label) {
    tree.Clear();
    const TreeNode root = tree.Add(kNoNode, "TX5000", 1);
    group = tree.Add(root, "Trigger", 2);
    tree.Add(group, "Mode [" + value + "]", 3);
    row = tree.Add(group, label + " [" + value + "]", 3);
    tree.SetExpanded(root, true);
    tree.SetExpanded(group, expanded);
  };
  build("1", true, "Level");
  tree.Select(row);
  build("2", true, "Level");
  EXPECT_EQ(tree.ReturnToPlace(), row);
  EXPECT_EQ(tree.Selected(), row) << "a value in brackets is no part of the place";
  build("3", false, "Level");
  EXPECT_EQ(tree.ReturnToPlace(), group) << "the nearest that shows";
  build("3", true, "Slope");
  EXPECT_EQ(tree.ReturnToPlace(), group) << "the row has gone";
  EXPECT_EQ(tree.Selected(), kNoNode);
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "platform/Form.h"
#include "platform/Timer.h"
#include "platform/TreeView.h"
#include "support/Tables.h"
#include "support/VirtualClock.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

TEST(Timer, NeverTicksInsideItsOwnHandler) {
  VirtualClock clock;
  std::vector<Ms> begun;
  Timer timer(clock, 100, [&] {
    begun.push_back(clock.Now());
    clock.Run(Ms(350));
  });
  timer.SetEnabled(true);
  clock.Run(Ms(600));
  EXPECT_EQ(begun, (std::vector<Ms>{Ms(100), Ms(500)})) << "what came due meanwhile is dropped";
}

TEST(Form, ASecondOpeningOfAModalWindowReturnsAtOnce) {
  VirtualClock clock;
  Form form;
  clock.UserAfter(Ms(100), [&] {
    form.ShowModal(clock.waiting);
    EXPECT_EQ(clock.Now(), Ms(100));
  });
  clock.UserAfter(Ms(200), [&] { form.Unload(); });
  form.ShowModal(clock.waiting);
  EXPECT_EQ(clock.Now(), Ms(200));
  EXPECT_EQ(Bits(form.Loaded(), form.Modal()), "00");
}

TEST(TreeView, ATreeBuiltAnewIsEnteredWhereItWasLeft) {
  TreeView tree;
  TreeNode group = kNoNode;
  const auto build = [&](bool expanded, const std::string& label) {
    tree.Clear();
    const TreeNode root = tree.Add(kNoNode, "TX5000", 1);
    group = tree.Add(root, "Trigger", 2);
    tree.Add(group, "Mode [1]", 3);
    tree.SetExpanded(root, true);
    tree.SetExpanded(group, expanded);
    return tree.Add(group, label, 3);
  };
  tree.Select(build(true, "Level [1]"));
  const TreeNode row = build(true, "Level [2]");
  EXPECT_EQ(tree.ReturnToPlace(), row);
  EXPECT_EQ(tree.Selected(), row) << "a value in brackets is no part of the place";
  build(false, "Level [2]");
  EXPECT_EQ(tree.ReturnToPlace(), group) << "the nearest that shows";
  build(true, "Slope [2]");
  EXPECT_EQ(tree.ReturnToPlace(), group) << "the row has gone";
  EXPECT_EQ(tree.Selected(), kNoNode);
}

}  // namespace
}  // namespace oriolemark

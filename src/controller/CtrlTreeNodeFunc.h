#pragma once

#include <array>
#include <string>

#include "controller/records/Parameters.h"
#include "platform/TreeView.h"

namespace oriolemark {

namespace ctrl_image {
inline constexpr int kRoot = 1;
inline constexpr int kGroup = 2;
inline constexpr int kLeaf = 3;
inline constexpr int kAction = 4;
inline constexpr int kVirtualPanel = 6;
}  // namespace ctrl_image

// Labels of the nodes that carry no value.
inline constexpr const char* kCtrlRootLabel = "TX5000";
inline constexpr const char* kAutoSetLabel = "Auto Set";
inline constexpr const char* kSetTrig50Label = "Set Trig to 50%";
inline constexpr const char* kForceTriggerLabel = "Force Trigger";
inline constexpr const char* kVirtualPanelLabel = "Virtual Panel";

// Builds the settings tree from the record and keeps its nodes by group and position.
class CtrlTreeNodeFunc {
 public:
  CtrlTreeNodeFunc(TreeView& tree, const CtrlSettings& settings)
      : tree_(tree), settings_(settings) {}

  // Clears the tree and builds it anew, the root expanded and the groups collapsed. A place that
  // the present method of the trigger does not fill keeps its old reference, which is dead.
  void BuildCtrlTree();
  // Expanded states of the root and the groups, kept from one to the other.
  void SaveTreeExpansion();
  void RestoreTreeExpansion();
  void ExpandGroup(int group);
  // The root and every group.
  void ExpandAll();

  // Writes the setting's text anew where the present method of the trigger has its node.
  void Repair(Field field);
  // Writes the setting's text on the node at this place, whatever that node is.
  void RepairAt(int group, int position, Field field);

 private:
  static constexpr int kPositions = 9;

  std::string TextOf(const Parameter& parameter) const;
  TreeNode& NodeAt(int group, int position);

  TreeView& tree_;
  const CtrlSettings& settings_;
  TreeNode CtrlRootNode = kNoNode;
  std::array<std::array<TreeNode, kPositions>, ctrl_group::kCount> CtrlNodes{};
  // Entry 0 is the root, the others are the groups.
  std::array<bool, ctrl_group::kCount> CtrlExpanded{};
};

}  // namespace oriolemark

#pragma once

#include <array>
#include <string>

#include "controller/records/Parameters.h"
#include "platform/TreeView.h"
#include "platform/WatchedFlag.h"

namespace oriolemark {

namespace ctrl_image {
inline constexpr int kRoot = 1;
inline constexpr int kGroup = 2;
inline constexpr int kLeaf = 3;
inline constexpr int kAction = 4;
inline constexpr int kVirtualPanel = 6;
}  // namespace ctrl_image

// Labels of the nodes without a value.
inline constexpr const char* kCtrlRootLabel = "TX5000";
inline constexpr const char* kAutoSetLabel = "Auto Set";
inline constexpr const char* kSetTrig50Label = "Set Trig to 50%";
inline constexpr const char* kForceTriggerLabel = "Force Trigger";
inline constexpr const char* kVirtualPanelLabel = "Virtual Panel";

// Builds the settings tree from the record and keeps its nodes by group and position.
class CtrlTreeNodeFunc {
 public:
  // The root's picture shows `changed`.
  CtrlTreeNodeFunc(TreeView& tree, const CtrlSettings& settings, const WatchedFlag& changed)
      : tree_(tree), settings_(settings), changed_(changed) {}

  // Clears and rebuilds the tree, with the root expanded and the groups collapsed. A position that
  // is not in use keeps the number of a node that is gone. Writing there does nothing.
  void BuildCtrlTree();
  // Save and restore which of the root and the groups are expanded.
  void SaveTreeExpansion();
  void RestoreTreeExpansion();
  void ExpandGroup(int group);
  // Expands the root and every group.
  void ExpandAll();

  // Shows again whether there are unsaved changes.
  void ShowChanged() { tree_.SetMarked(CtrlRootNode, changed_); }

  // Writes the setting's changed text on its node, at the position that RepairPosition gives for
  // the present trigger method.
  void Repair(Field field);
  // Writes the setting's text on the node at this position, whichever node that is.
  void RepairAt(int group, int position, Field field);

 private:
  static constexpr int kPositions = 9;

  std::string TextOf(const Parameter& parameter) const;
  TreeNode& NodeAt(int group, int position);

  TreeView& tree_;
  const CtrlSettings& settings_;
  const WatchedFlag& changed_;
  TreeNode CtrlRootNode = kNoNode;
  std::array<std::array<TreeNode, kPositions>, ctrl_group::kCount> CtrlNodes{};
  // Entry 0 is the root, the others are the groups.
  std::array<bool, ctrl_group::kCount> CtrlExpanded{};
};

}  // namespace oriolemark

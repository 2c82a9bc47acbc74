#include "controller/CtrlTreeNodeFunc.h"

namespace oriolemark {
namespace {

using S = CtrlSettings;

// A child of a group: a setting, or the label of a command.
struct TreeRow {
  int group;
  Field field = nullptr;
  const char* action = nullptr;
  int position = 0;  // of a command; a setting has its own
};

// The children of each group, in the order in which they are added. A setting of the Trigger group
// is added only if the trigger method has a position for it.
constexpr TreeRow kTreeOrder[] = {
    {ctrl_group::kRunningControl, &S::RunStop},
    {ctrl_group::kRunningControl, nullptr, kAutoSetLabel, 2},
    {ctrl_group::kRunningControl, nullptr, kSetTrig50Label, 4},
    {ctrl_group::kRunningControl, nullptr, kForceTriggerLabel, 3},
    {ctrl_group::kCH1, &S::CH1Display},
    {ctrl_group::kCH1, &S::CH1VoltDiv},
    {ctrl_group::kCH1, &S::CH1Offset},
    {ctrl_group::kCH1, &S::CH1Coupling},
    {ctrl_group::kCH1, &S::CH1BWLimit},
    {ctrl_group::kCH1, &S::CH1Probe},
    {ctrl_group::kCH2, &S::CH2Display},
    {ctrl_group::kCH2, &S::CH2VoltDiv},
    {ctrl_group::kCH2, &S::CH2Offset},
    {ctrl_group::kCH2, &S::CH2Coupling},
    {ctrl_group::kCH2, &S::CH2BWLimit},
    {ctrl_group::kCH2, &S::CH2Probe},
    {ctrl_group::kTimeBase, &S::TimeDiv},
    {ctrl_group::kTimeBase, &S::TimeDelay},
    {ctrl_group::kTimeBase, &S::Holdoff},
    {ctrl_group::kTimeBase, &S::MemorySize},
    {ctrl_group::kTimeBase, &S::TimeFormat},
    {ctrl_group::kTrigger, &S::TrigMethod},
    {ctrl_group::kTrigger, &S::TrigSlope},
    {ctrl_group::kTrigger, &S::TrigSource},
    {ctrl_group::kTrigger, &S::PulseMode},
    {ctrl_group::kTrigger, &S::PulseWidth},
    {ctrl_group::kTrigger, &S::TrigMode},
    {ctrl_group::kTrigger, &S::TrigCoupling},
    {ctrl_group::kTrigger, &S::VideoPolarity},
    {ctrl_group::kTrigger, &S::VideoSync},
    {ctrl_group::kTrigger, &S::TrigLevel},
    {ctrl_group::kTrigger, &S::LineNumber},
    {ctrl_group::kTrigger, &S::VideoStandard},
    {ctrl_group::kAcquire, &S::Acquisition},
    {ctrl_group::kAcquire, &S::SamplingMode},
    {ctrl_group::kAcquire, &S::Intensity},
    {ctrl_group::kAcquire, &S::Averages},
    {ctrl_group::kAcquire, &S::AntiAliasing},
    {ctrl_group::kDisplay, &S::DisplayType},
    {ctrl_group::kDisplay, &S::Persist},
    {ctrl_group::kDisplay, &S::Grid},
};

}  // namespace

TreeNode& CtrlTreeNodeFunc::NodeAt(int group, int position) {
  return CtrlNodes[static_cast<std::size_t>(group)][static_cast<std::size_t>(position)];
}

std::string CtrlTreeNodeFunc::TextOf(const Parameter& parameter) const {
  return std::string(parameter.label) + " [" + settings_.*parameter.field + "]";
}

void CtrlTreeNodeFunc::BuildCtrlTree() {
  tree_.Clear();
  CtrlRootNode = tree_.Add(kNoNode, kCtrlRootLabel, ctrl_image::kRoot);
  for (int group = 1; group < ctrl_group::kCount; ++group) {
    NodeAt(group, 0) =
        tree_.Add(CtrlRootNode, kGroupLabels[static_cast<std::size_t>(group)], ctrl_image::kGroup);
  }
  const TriggerShape shape = ShapeOf(settings_.TrigMethod);
  for (const TreeRow& row : kTreeOrder) {
    const TreeNode parent = NodeAt(row.group, 0);
    if (row.field == nullptr) {
      NodeAt(row.group, row.position) = tree_.Add(parent, row.action, ctrl_image::kAction);
      continue;
    }
    const Parameter& parameter = ParameterOf(row.field);
    const int position = parameter.PositionIn(shape);
    if (position == 0) continue;
    NodeAt(row.group, position) = tree_.Add(parent, TextOf(parameter), ctrl_image::kLeaf);
  }
  tree_.Add(CtrlRootNode, kVirtualPanelLabel, ctrl_image::kVirtualPanel);
  tree_.SetExpanded(CtrlRootNode, true);
  ShowChanged();
}

void CtrlTreeNodeFunc::SaveTreeExpansion() {
  CtrlExpanded[0] = tree_.Expanded(CtrlRootNode);
  for (int group = 1; group < ctrl_group::kCount; ++group) {
    CtrlExpanded[static_cast<std::size_t>(group)] = tree_.Expanded(NodeAt(group, 0));
  }
}

void CtrlTreeNodeFunc::RestoreTreeExpansion() {
  tree_.SetExpanded(CtrlRootNode, CtrlExpanded[0]);
  for (int group = 1; group < ctrl_group::kCount; ++group) {
    tree_.SetExpanded(NodeAt(group, 0), CtrlExpanded[static_cast<std::size_t>(group)]);
  }
}

void CtrlTreeNodeFunc::ExpandGroup(int group) {
  tree_.SetExpanded(NodeAt(group, 0), true);
}

void CtrlTreeNodeFunc::ExpandAll() {
  tree_.SetExpanded(CtrlRootNode, true);
  for (int group = 1; group < ctrl_group::kCount; ++group) ExpandGroup(group);
}

void CtrlTreeNodeFunc::Repair(Field field) {
  const Parameter& parameter = ParameterOf(field);
  const int position = parameter.RepairPosition(ShapeOf(settings_.TrigMethod));
  if (position != 0) RepairAt(parameter.group, position, field);
}

void CtrlTreeNodeFunc::RepairAt(int group, int position, Field field) {
  tree_.SetText(NodeAt(group, position), TextOf(ParameterOf(field)));
}

}  // namespace oriolemark

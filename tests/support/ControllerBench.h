#pragma once

#include <sstream>

#include "support/ProgramBench.h"
#include "support/Tables.h"

namespace oriolemark {

// The settings in the order of the record. Tables number them from 1.
using Kept = CtrlSettings;
inline constexpr std::string Kept::*kRecord[] = {
    &Kept::RunStop,       &Kept::CH1Display,   &Kept::CH1VoltDiv,    &Kept::CH1Offset,
    &Kept::CH1Coupling,   &Kept::CH1BWLimit,   &Kept::CH1Probe,      &Kept::CH1Invert,
    &Kept::CH2Display,    &Kept::CH2VoltDiv,   &Kept::CH2Offset,     &Kept::CH2Coupling,
    &Kept::CH2BWLimit,    &Kept::CH2Probe,     &Kept::CH2Invert,     &Kept::TimeDiv,
    &Kept::TimeDelay,     &Kept::Holdoff,      &Kept::MemorySize,    &Kept::MemOffset,
    &Kept::TimeFormat,    &Kept::TrigMethod,   &Kept::TrigSlope,     &Kept::TrigSource,
    &Kept::TrigMode,      &Kept::TrigCoupling, &Kept::PulseMode,     &Kept::PulseWidth,
    &Kept::VideoPolarity, &Kept::VideoSync,    &Kept::VideoStandard, &Kept::LineNumber,
    &Kept::TrigLevel,     &Kept::SamplingMode, &Kept::Acquisition,   &Kept::Averages,
    &Kept::Intensity,     &Kept::AntiAliasing, &Kept::DisplayType,   &Kept::Persist,
    &Kept::Grid};
inline constexpr std::size_t kFields = std::size(kRecord);
static_assert(kFields == 41);

// What stands before the value on the wire, by the number of the setting in the record. The run
// state is asked for under another name, and the offset in the memory never goes over the wire.
inline const auto kHeads = Rows(R"(
: || :TRIGGER:STATUS: || :CHANNEL1:DISPLAY: || :CHANNEL1:RANGE: || :CHANNEL1:OFFSET:
:CHANNEL1:COUPLING: || :CHANNEL1:BWLimit: || :CHANNEL1:PROBE: || :CHANNEL1:INVERT:
:CHANNEL2:DISPLAY: || :CHANNEL2:RANGE: || :CHANNEL2:OFFSET: || :CHANNEL2:COUPLING:
:CHANNEL2:BWLimit: || :CHANNEL2:PROBE: || :CHANNEL2:INVERT: || :TimeBase:RANGE:
:TimeBase:TRIGGER DELAY: || :TimeBase:Holdoff: || :DATA:SysMemSize: || - || :TimeBase:FORMAT:
:TRIGGER:METHOD: || :TRIGGER:SLOPE: || :TRIGGER:Source: || :TRIGGER:MODE: || :TRIGGER:COUPLING:
:TRIGGER:PULSE MODE: || :TRIGGER:PULSE WIDTH: || :TRIGGER:POLARITY: || :TRIGGER:SYNC:
:TRIGGER:VIDEO STANDARD: || :TRIGGER:LINE_NUM: || :TRIGGER:LEVEL: || :ACQUIRE:SAMPLING:
:ACQUIRE:ACQUISITION: || :ACQUIRE:AVERAGES: || :ACQUIRE:INTENSITY: || :ACQUIRE:ANTI-ALIASING:
:DISPLAY:TYPE: || :DISPLAY:PERSIST: || :DISPLAY:GRID:
)");

// With each mark replaced.
inline std::string Filled(std::string text, char mark, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(mark)) != text.npos;) text.replace(at, 1, by);
  return text;
}

// Every setting holds this text and its own number.
inline CtrlSettings Numbered(const std::string& text) {
  CtrlSettings settings;
  for (std::size_t i = 1; i <= kFields; ++i) settings.*kRecord[i - 1] = text + std::to_string(i);
  return settings;
}
// Sets some, by their numbers: "1=STOP;2=OFF".
inline void Set(CtrlSettings& settings, const std::string& changes) {
  std::istringstream stream(changes);
  std::string number, value;
  while (std::getline(stream, number, '=') && std::getline(stream, value, ';')) {
    settings.*kRecord[std::stoul(number) - 1] = value;
  }
}
// The 41 values with bars between them.
inline std::string Listed(const CtrlSettings& settings) {
  std::string values;
  for (std::size_t i = 1; i <= kFields; ++i) values += settings.*kRecord[i - 1] + "|";
  return values;
}

// The program with the Controller open on a new document, worked without its main wait.
struct ControllerBench : ProgramBench {
  explicit ControllerBench(const char* ioType = "2") {
    Store("IO Settings", "ScopeIOType", ioType);
    module.main.Load();
    clock.Run(Milliseconds(10));
    EXPECT_TRUE(controller.Loaded());
  }
  void Connect() {
    controller.mnuConnect.Click();
    ASSERT_TRUE(module.Link().ScopeConnected);
    Sent();
  }
  // Each question is answered by this text and the number of its setting.
  void AnswerNumbered(const std::string& text) {
    for (std::size_t i = 1; i <= kFields; ++i) {
      port.lies[kHeads[i][0] + "?"] = text + std::to_string(i) + "\n";
    }
  }
  // Commands since the last call, with ';' between them.
  std::string Sent() {
    std::string commands = Filled(std::exchange(port.written, {}), '\r', ";");
    if (!commands.empty()) commands.pop_back();
    return commands;
  }

  // The node of a group, or the one in it with this label.
  TreeNode Node(const std::string& group, const std::string& label = {}) const {
    const TreeNode node = ChildOf(tree.First(), group);
    return label.empty() ? node : ChildOf(node, label);
  }
  TreeNode ChildOf(TreeNode parent, const std::string& label) const {
    for (const TreeNode node : tree.Children(parent)) {
      if ((tree.Text(node) + " [").starts_with(label + " [")) return node;
    }
    return kNoNode;
  }
  // The texts of the leaves of this group, or of all.
  std::vector<std::string> Leaves(const std::string& group = {}) const {
    std::vector<std::string> texts;
    for (const TreeNode node : tree.Children(tree.First())) {
      if (!group.empty() && tree.Text(node) != group) continue;
      for (const TreeNode leaf : tree.Children(node)) texts.push_back(tree.Text(leaf));
    }
    return texts;
  }
  std::string Joined(const std::string& group) const { return ChangedSince({}, group); }
  // The texts of the leaves that are not as before, in their order.
  std::string ChangedSince(const std::vector<std::string>& before,
                           const std::string& group = {}) const {
    std::string changed;
    const std::vector<std::string> now = Leaves(group);
    EXPECT_TRUE(before.empty() || now.size() == before.size());
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (i < before.size() && now[i] == before[i]) continue;
      changed += (changed.empty() ? "" : ", ") + now[i];
    }
    return changed;
  }

  void DoubleClick(TreeNode node) {
    tree.Click(node);
    tree.DoubleClick();
  }
  // Opens the edit of a node; the hand works the dialog, which must have opened.
  void Edit(TreeNode node, std::function<void()> hand) {
    ASSERT_NE(node, kNoNode);
    bool opened = false;
    At(1, [this, &opened, act = std::move(hand)] {
      opened = dialog.Visible() && dialog.Modal();
      if (opened) act();
      dialog.Unload();
    });
    DoubleClick(node);
    EXPECT_TRUE(opened);
  }
  // The user's choice (none: as the list opened), or the number typed, and OK.
  void Confirm(const std::string& entry) {
    if (dialog.Combo.Visible()) {
      if (!entry.empty()) dialog.Combo.SetText(entry);
      EXPECT_EQ(dialog.Combo.Text(), entry);
    } else {
      dialog.inputTxt.SetText(entry);
    }
    dialog.cmdOK.Click();
  }
  void ExpectRest() {
    EXPECT_FALSE(module.Transfer().TransferActive || module.progress.Loaded() || dialog.Loaded());
    EXPECT_EQ(waiting.Depth(), 0);
  }
  frmCtrlList& controller = module.controller;
  TreeView& tree = module.controller.CtrlTreeView;
  CtrlDialog& dialog = module.controller.dialog;
  CtrlSettings& settings = module.settings;
  CtrlDocument& document = module.controlDocument;
};

}  // namespace oriolemark

#pragma once

#include <regex>

#include "support/ProgramBench.h"

namespace oriolemark {

// The 41 settings in the order of the record, counted from 1.
inline constexpr std::string CtrlSettings::*kRecord[] = {nullptr,
                                                         &CtrlSettings::RunStop,
                                                         &CtrlSettings::CH1Display,
                                                         &CtrlSettings::CH1VoltDiv,
                                                         &CtrlSettings::CH1Offset,
                                                         &CtrlSettings::CH1Coupling,
                                                         &CtrlSettings::CH1BWLimit,
                                                         &CtrlSettings::CH1Probe,
                                                         &CtrlSettings::CH1Invert,
                                                         &CtrlSettings::CH2Display,
                                                         &CtrlSettings::CH2VoltDiv,
                                                         &CtrlSettings::CH2Offset,
                                                         &CtrlSettings::CH2Coupling,
                                                         &CtrlSettings::CH2BWLimit,
                                                         &CtrlSettings::CH2Probe,
                                                         &CtrlSettings::CH2Invert,
                                                         &CtrlSettings::TimeDiv,
                                                         &CtrlSettings::TimeDelay,
                                                         &CtrlSettings::Holdoff,
                                                         &CtrlSettings::MemorySize,
                                                         &CtrlSettings::MemOffset,
                                                         &CtrlSettings::TimeFormat,
                                                         &CtrlSettings::TrigMethod,
                                                         &CtrlSettings::TrigSlope,
                                                         &CtrlSettings::TrigSource,
                                                         &CtrlSettings::TrigMode,
                                                         &CtrlSettings::TrigCoupling,
                                                         &CtrlSettings::PulseMode,
                                                         &CtrlSettings::PulseWidth,
                                                         &CtrlSettings::VideoPolarity,
                                                         &CtrlSettings::VideoSync,
                                                         &CtrlSettings::VideoStandard,
                                                         &CtrlSettings::LineNumber,
                                                         &CtrlSettings::TrigLevel,
                                                         &CtrlSettings::SamplingMode,
                                                         &CtrlSettings::Acquisition,
                                                         &CtrlSettings::Averages,
                                                         &CtrlSettings::Intensity,
                                                         &CtrlSettings::AntiAliasing,
                                                         &CtrlSettings::DisplayType,
                                                         &CtrlSettings::Persist,
                                                         &CtrlSettings::Grid};
inline constexpr std::size_t kFields = 41;
static_assert(std::size(kRecord) == kFields + 1);

// The cells of a table: rows end in a line end or " || ", " | " stands between cells, and "-" is an
// empty one.
inline std::vector<std::vector<std::string>> Rows(const std::string& table) {
  static const std::regex kRow("\n| \\|\\| ");
  static const std::regex kBar(" \\| ");
  const auto split = [](const std::string& text, const std::regex& at) {
    return std::vector<std::string>(std::sregex_token_iterator(text.begin(), text.end(), at, -1),
                                    {});
  };
  std::vector<std::vector<std::string>> rows;
  for (const std::string& row : split(table, kRow)) {
    if (row.empty()) continue;
    rows.push_back(split(row, kBar));
    std::ranges::replace(rows.back(), std::string("-"), std::string());
  }
  return rows;
}
// With each mark replaced.
inline std::string Filled(std::string text, char mark, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(mark)) != text.npos;) text.replace(at, 1, by);
  return text;
}

// Every setting holds this text and its own number.
inline CtrlSettings Numbered(const std::string& text) {
  CtrlSettings settings;
  for (std::size_t i = 1; i <= kFields; ++i) settings.*kRecord[i] = text + std::to_string(i);
  return settings;
}
// The 41 values with bars between them.
inline std::string Listed(const CtrlSettings& settings) {
  std::string values;
  for (std::size_t i = 1; i <= kFields; ++i) values += settings.*kRecord[i] + "|";
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
  // Commands since the last call, with ';' between them.
  std::string Sent() {
    std::string commands = std::exchange(port.written, {});
    std::replace(commands.begin(), commands.end(), '\r', ';');
    if (!commands.empty()) commands.pop_back();
    return commands;
  }

  // The node of a group, or the one in it with this label.
  TreeNode Node(const std::string& group, const std::string& label = {}) const {
    for (const TreeNode node : tree.Children(tree.First())) {
      if (tree.Text(node) != group) continue;
      if (label.empty()) return node;
      for (const TreeNode leaf : tree.Children(node)) {
        const std::string& text = tree.Text(leaf);
        if (text == label || text.starts_with(label + " [")) return leaf;
      }
    }
    return kNoNode;
  }
  std::vector<std::string> Leaves(const std::string& group) const {
    std::vector<std::string> texts;
    for (const TreeNode leaf : tree.Children(Node(group))) texts.push_back(tree.Text(leaf));
    return texts;
  }
  std::string Joined(const std::string& group) const {
    std::string joined;
    for (const std::string& text : Leaves(group)) joined += (joined.empty() ? "" : ", ") + text;
    return joined;
  }
  // The texts of the leaves that are not as before, in their order.
  std::vector<std::string> AllLeaves() const {
    std::vector<std::string> texts;
    for (const TreeNode group : tree.Children(tree.First())) {
      for (const std::string& text : Leaves(tree.Text(group))) texts.push_back(text);
    }
    return texts;
  }
  std::string ChangedSince(const std::vector<std::string>& before) const {
    std::string changed;
    const std::vector<std::string> now = AllLeaves();
    EXPECT_EQ(now.size(), before.size());
    for (std::size_t i = 0; i < std::min(now.size(), before.size()); ++i) {
      if (now[i] != before[i]) changed += (changed.empty() ? "" : ", ") + now[i];
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
  // The user's choice, or the number typed, and OK.
  void Confirm(const std::string& entry) {
    if (dialog.Combo.Visible()) {
      dialog.Combo.SetText(entry);
      EXPECT_EQ(dialog.Combo.Text(), entry) << "not on offer";
    } else {
      dialog.inputTxt.SetText(entry);
    }
    dialog.cmdOK.Click();
  }
  void ExpectRest() {
    EXPECT_FALSE(module.Transfer().TransferActive || module.progress.Loaded() || dialog.Loaded());
    EXPECT_EQ(waiting.Depth(), 0);
    EXPECT_FALSE(clock.Stuck());
  }
  // The texts of the boxes since the last call.
  std::vector<std::string> Told() {
    std::vector<std::string> texts;
    for (const Message& message : std::exchange(prompts.shown, {})) {
      texts.push_back(message.text + message.systemText);
    }
    return texts;
  }

  frmCtrlList& controller = module.controller;
  TreeView& tree = module.controller.CtrlTreeView;
  CtrlDialog& dialog = module.controller.dialog;
  CtrlSettings& settings = module.settings;
  CtrlDocument& document = module.controlDocument;
};

}  // namespace oriolemark

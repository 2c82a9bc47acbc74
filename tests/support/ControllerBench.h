#pragma once

#include "support/ProgramBench.h"

namespace oriolemark {

// The settings in the order of the record, without the offset in the memory, which never goes over
// the wire.
inline const auto kSettings = Split(
    "RunStop CH1Display CH1VoltDiv CH1Offset CH1Coupling CH1BWLimit CH1Probe CH1Invert CH2Display "
    "CH2VoltDiv CH2Offset CH2Coupling CH2BWLimit CH2Probe CH2Invert TimeDiv TimeDelay Holdoff "
    "MemorySize TimeFormat TrigMethod TrigSlope TrigSource TrigMode TrigCoupling PulseMode "
    "PulseWidth VideoPolarity VideoSync VideoStandard LineNumber TrigLevel SamplingMode "
    "Acquisition Averages Intensity AntiAliasing DisplayType Persist Grid",
    ' ');

inline const Parameter& ParameterNamed(std::string_view setting) {
  const auto found = std::ranges::find(kSettings, setting);
  if (found == kSettings.end()) throw std::invalid_argument(std::string(setting));
  return Parameters()[static_cast<std::size_t>(found - kSettings.begin())];
}
inline std::string& ValueOf(CtrlSettings& settings, std::string_view setting) {
  return setting == "MemOffset" ? settings.MemOffset : settings.*ParameterNamed(setting).field;
}
// Every setting holds this text and its own name.
inline CtrlSettings Named(const std::string& text) {
  CtrlSettings settings;
  settings.MemOffset = text + "MemOffset";
  for (const auto& name : kSettings) ValueOf(settings, name) = text + name;
  return settings;
}
// Sets some: "RunStop=STOP; CH1Display=OFF".
inline void Set(CtrlSettings& settings, const std::string& changes) {
  for (const std::string& change : Split(changes, ';')) {
    const std::size_t begin = change.find_first_not_of(' '), mark = change.find('=');
    ValueOf(settings, change.substr(begin, mark - begin)) = change.substr(mark + 1);
  }
}
// The 41 values with bars between them.
inline std::string Listed(CtrlSettings settings) {
  std::string values = settings.MemOffset;
  for (const auto& name : kSettings) values += "|" + ValueOf(settings, name);
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
  // Each question is answered by this text and the name of its setting.
  void AnswerNamed(const std::string& text) {
    for (const auto& name : kSettings)
      port.lies[ParameterNamed(name).Question()] = text + name + "\n";
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
    EXPECT_EQ(Bits(module.Transfer().TransferActive, module.progress.Loaded(), dialog.Loaded()),
              "000");
    EXPECT_EQ(waiting.Depth(), 0);
  }
  frmCtrlList& controller = module.controller;
  TreeView& tree = module.controller.CtrlTreeView;
  CtrlDialog& dialog = module.controller.dialog;
  CtrlSettings& settings = module.settings;
  CtrlDocument& document = module.controlDocument;
};

}  // namespace oriolemark

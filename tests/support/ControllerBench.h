#pragma once

#include "support/ProgramBench.h"

namespace oriolemark {

// The settings in the order of the record.
#define NAMED(setting) \
  { #setting, &CtrlSettings::setting }
inline constexpr std::pair<const char*, std::string CtrlSettings::*> kRecord[] = {
    NAMED(RunStop),       NAMED(CH1Display),   NAMED(CH1VoltDiv),    NAMED(CH1Offset),
    NAMED(CH1Coupling),   NAMED(CH1BWLimit),   NAMED(CH1Probe),      NAMED(CH1Invert),
    NAMED(CH2Display),    NAMED(CH2VoltDiv),   NAMED(CH2Offset),     NAMED(CH2Coupling),
    NAMED(CH2BWLimit),    NAMED(CH2Probe),     NAMED(CH2Invert),     NAMED(TimeDiv),
    NAMED(TimeDelay),     NAMED(Holdoff),      NAMED(MemorySize),    NAMED(MemOffset),
    NAMED(TimeFormat),    NAMED(TrigMethod),   NAMED(TrigSlope),     NAMED(TrigSource),
    NAMED(TrigMode),      NAMED(TrigCoupling), NAMED(PulseMode),     NAMED(PulseWidth),
    NAMED(VideoPolarity), NAMED(VideoSync),    NAMED(VideoStandard), NAMED(LineNumber),
    NAMED(TrigLevel),     NAMED(SamplingMode), NAMED(Acquisition),   NAMED(Averages),
    NAMED(Intensity),     NAMED(AntiAliasing), NAMED(DisplayType),   NAMED(Persist),
    NAMED(Grid)};
#undef NAMED
static_assert(std::size(kRecord) == 41);

// What stands before the value on the wire, in the order of the record. The run state is asked for
// under another name, and the offset in the memory never goes over the wire.
inline const auto kHeads = Rows(R"(
:TRIGGER:STATUS: || :CHANNEL1:DISPLAY: || :CHANNEL1:RANGE: || :CHANNEL1:OFFSET:
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

inline std::size_t PlaceOf(std::string_view setting) {
  const auto found = std::ranges::find(kRecord, setting, [](auto& row) { return row.first; });
  if (found == std::end(kRecord)) throw std::invalid_argument(std::string(setting));
  return static_cast<std::size_t>(found - kRecord);
}
inline std::string& ValueOf(CtrlSettings& settings, std::string_view setting) {
  return settings.*kRecord[PlaceOf(setting)].second;
}
inline const std::string& HeadOf(std::string_view setting) {
  return kHeads[PlaceOf(setting)][0];
}
// Every setting holds this text and its own name.
inline CtrlSettings Named(const std::string& text) {
  CtrlSettings settings;
  for (const auto& [name, field] : kRecord) settings.*field = text + name;
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
inline std::string Listed(const CtrlSettings& settings) {
  std::string values;
  for (const auto& [name, field] : kRecord) values += settings.*field + "|";
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
    for (const auto& [name, field] : kRecord) port.lies[HeadOf(name) + "?"] = text + name + "\n";
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

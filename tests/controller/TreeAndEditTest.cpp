#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

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
  // The method, the leaves of the Trigger group, and which of them is the level afterwards.
  for (const auto& row : Rows(R"(
EDGE | Method [EDGE], Slope [RISING], Source [CH1], Mode [AUTO], Coupling [DC], Level [0.00div] | 5
PULSE | Method [PULSE], Source [CH1], Pulse mode [+LESS THAN],
  Pulse width [1us], Mode [AUTO], Coupling [DC], Level [0.00div] | 4
VIDEO | Method [VIDEO], Source [CH1], Polarity [POSITIVE], Sync [LINE], Line number [1],
  Video Standard [] | 5
- | Method [], Source [CH1] | -
)")) {
    SCOPED_TRACE(row[0]);
    ControllerBench bench;
    bench.Connect();
    bench.port.lies[":TRIGGER:LEVEL:?"] = "1.00div\n";
    bench.settings.TrigMethod = row[0];
    bench.controller.BuildCtrlTree();
    EXPECT_EQ(bench.Joined("Trigger"), row[1]);
    auto leaves = bench.Leaves("Trigger");
    if (!row[2].empty()) leaves.at(std::stoul(row[2])) = "Level [1.00div]";
    bench.DoubleClick(bench.Node("Running Control", "Set Trig to 50%"));
    EXPECT_EQ(bench.Sent(), ":TRIG%50;:TRIGGER:LEVEL:?");
    EXPECT_EQ(bench.Leaves("Trigger"), leaves);
    EXPECT_EQ(bench.settings.TrigLevel + bench.settings.TrigMode, "1.00divAUTO");
    EXPECT_FALSE(bench.document.CtrlChanged);
  }
}

const std::string kTimeBaseAsked =
    ":TimeBase:TRIGGER DELAY:?;:TimeBase:Holdoff:?;:DATA:SysMemSize:?";

// A document that differs from a new one by the trigger's method and what follows it.
struct EditBench : ControllerBench {
  explicit EditBench(const std::string& given = "EDGE") {
    AnswerNamed("a b");
    port.lies[":TimeBase:RANGE:?"] = "50.00us\n";
    Connect();
    Set(settings, "CH2Display=ON; TrigMethod=" + given);
    controller.BuildCtrlTree();
  }
};

// The rows of a list, of a long one the first, the middle and the last.
std::string Shown(const std::vector<std::string>& items) {
  std::string shown = std::to_string(items.size());
  if (items.size() > 10) {
    return shown + " " + items.front() + ".." + items[items.size() / 2] + ".." + items.back();
  }
  for (const std::string& item : items) shown += (&item == &items[0] ? " " : ",") + item;
  return shown;
}

// The node, what differs from a new document, the list on offer, the row picked of it (none: where
// the value is not on offer) or the number typed, what is sent, and the nodes that are new then.
// "#" is either channel, "=" the edited node with what was picked, which also ends a command that
// ends in a colon, "^" what each question is answered, "~" leads to a further command on the
// trigger, "@" stands for the questions about the time base and "*" for their nodes. First the
// edits that change record and node before the command leaves, then the others.
const char* const kStoredFirst = R"(
Running Control | Run|Stop | EDGE | 2 RUN,STOP | STOP | : | =
Running Control | Run|Stop | EDGE | 2 RUN,STOP | RUN | : | -
Running Control | Run|Stop | EDGE; TrigMode=SINGLE | 2 RUN,STOP | RUN | :KEY: | -
Running Control | Run|Stop | VIDEO; TrigMode=SINGLE | 2 RUN,STOP | STOP | : | =
CH# | Display | EDGE | 2 ON,OFF | OFF | :CHANNEL#:DISPLAY: | =
CH# | Display | EDGE | 2 ON,OFF | ON | :CHANNEL#:DISPLAY:ON;:CHANNEL#:RANGE:1.00V | -
CH1 | Volt/Div | EDGE; CH2Probe=10X | 11 2.00mV..100mV..5.00V | 2.00mV | :CHANNEL1:RANGE: | =
CH2 | Volt/Div | EDGE; CH2Probe=10X | 11 20.0mV..1.00V..50.0V | 50.0V | :CHANNEL2:RANGE: | =
CH1 | Volt/Div | EDGE; CH1Probe=100X | 11 200mV..10.0V..500V | 200mV | :CHANNEL1:RANGE: | =
CH2 | Volt/Div | EDGE; CH2Probe=1000X | 11 2.00V..100V..5kV | 5kV | :CHANNEL2:RANGE: | =
CH2 | Volt/Div | EDGE; CH2Probe=5X | 0 | - | :CHANNEL2:RANGE: | =
CH# | Offset | EDGE | 601 12.00div..0.00div..-12.00div | -12.00div | :CHANNEL#:OFFSET: | =
CH# | Coupling | EDGE | 2 DC,AC | DC | :CHANNEL#:COUPLING: | =
CH# | BW Limit | EDGE | 2 ON,OFF | ON | :CHANNEL#:BWLimit: | =
CH# | Probe | EDGE | 4 1X,10X,100X,1000X | 10X | :CHANNEL#:PROBE:10X;:CHANNEL#:RANGE:?
  | Volt/Div [abCH#VoltDiv], Probe [10X]
Trigger | Slope | EDGE | 2 RISING,FALLING | FALLING | :TRIGGER:SLOPE: | =
Trigger | Source | EDGE | 5 CH1,CH2,EXT,EXT5,AC | AC | :TRIGGER:Source: | =
Trigger | Mode | EDGE | 3 AUTO,NORMAL,SINGLE | SINGLE | :TRIGGER:MODE: | =
Trigger | Coupling | EDGE | 4 DC,AC,HF,LF | LF | :TRIGGER:COUPLING: | =
Trigger | Level | EDGE | 601 12.00div..0.00div..-12.00div | -0.04div | :TRIGGER:LEVEL: | =
Trigger | Source | PULSE | 4 CH1,CH2,EXT,EXT5 | EXT5 | :TRIGGER:Source: | =
Trigger | Pulse mode | PULSE | 6 +LESS THAN,+MORE THAN,+EQUAL,-LESS THAN,-MORE THAN,-EQUAL
  | -MORE THAN | :TRIGGER:PULSE MODE: | =
Trigger | Polarity | VIDEO | 2 NEGATIVE,POSITIVE | NEGATIVE | :TRIGGER:POLARITY: | =
Trigger | Sync | VIDEO | 4 ALL LINE,LINE Number,ODD FIELD,EVEN FIELD | ALL LINE | :TRIGGER:SYNC: | =
Trigger | Line number | VIDEO; VideoStandard=NTSC | 525 1..263..525 | 525 | :TRIGGER:LINE_NUM: | =
Trigger | Line number | VIDEO | 625 1..313..625 | 625 | :TRIGGER:LINE_NUM: | =
Trigger | Video Standard | VIDEO | 2 NTSC,PAL/SECAM | PAL/SECAM | :TRIGGER:VIDEO STANDARD: | =
)";
const char* const kSentFirst = R"(
Time Base | Time/Div | EDGE | 33 1.000ns..200.0us..50.00s | 20.00us
  | :TimeBase:RANGE:20.00us;:TimeBase:RANGE:?;@;:DISPLAY:TYPE:? | Time/Div [50.00us], *,
  Type [^DisplayType]
Time Base | Delay | EDGE | typed | 5e-4 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:0.5ms;@ | *
Time Base | Delay | EDGE | typed | 1.5 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:1s;@ | *
Time Base | Holdoff | EDGE | typed | 1e-6 | :TimeBase:Holdoff:1.0us;@ | *
Time Base | Format | EDGE | 2 Y-T,X-Y | Y-T | :TimeBase:FORMAT:Y-T;:TimeBase:FORMAT:?;@ | *,
  Format [^TimeFormat]
Trigger | Method | EDGE | 3 EDGE,PULSE,VIDEO | EDGE
  | :TRIGGER:METHOD:EDGE~Source:?~SLOPE:?~MODE:?~COUPLING:?~LEVEL:? | Slope [^TrigSlope],
  Source [^TrigSource], Mode [^TrigMode], Coupling [^TrigCoupling], Level [^TrigLevel]
Trigger | Method | PULSE | 3 EDGE,PULSE,VIDEO | PULSE
  | :TRIGGER:METHOD:PULSE~Source:?~PULSE MODE:?~PULSE WIDTH:?~MODE:?~COUPLING:?~LEVEL:?
  | Source [^TrigSource], Pulse mode [^PulseMode], Pulse width [^PulseWidth], Mode [^TrigMode],
  Coupling [^TrigCoupling], Level [^TrigLevel]
Trigger | Method | VIDEO | 3 EDGE,PULSE,VIDEO | VIDEO
  | :TRIGGER:METHOD:VIDEO~Source:?~POLARITY:?~SYNC:?~LINE_NUM:?~VIDEO STANDARD:?
  | Source [^TrigSource], Polarity [^VideoPolarity], Sync [^VideoSync], Line number [^LineNumber],
  Video Standard [^VideoStandard]
Trigger | Pulse width | PULSE | typed | 2e-6 | :TRIGGER:PULSE WIDTH:0.002ms~PULSE WIDTH:?
  | Pulse width [^PulseWidth]
Acquire | Sampling Mode | EDGE | 2 EQU_TIME,REAL_TIME | EQU_TIME
  | :ACQUIRE:SAMPLING:EQU_TIME;:ACQUIRE:SAMPLING:? | Sampling Mode [^SamplingMode]
Acquire | Acquisition | EDGE | 4 NORMAL,ENVELOPE,AVERAGE,ANALOG | ANALOG | :ACQUIRE:ACQUISITION: | =
Acquire | Averages | EDGE | 8 2,4,8,16,32,64,128,256 | 256 | :ACQUIRE:AVERAGES: | =
Acquire | Intensity | EDGE | 100 1%..51%..100% | 100% | :ACQUIRE:INTENSITY: | =
Acquire | Anti-aliasing | EDGE | 2 ON,OFF | ON | :ACQUIRE:ANTI-ALIASING: | =
Display | Type | EDGE | 2 VECT,DOT | VECT | :DISPLAY:TYPE:VECT;:DISPLAY:TYPE:? | Type [^DisplayType]
Display | Persist | EDGE | 2 ON,OFF | ON | :DISPLAY:PERSIST: | =
Display | Grid | EDGE | 3 FULL,HALF,NONE | NONE | :DISPLAY:GRID: | =
)";

std::vector<std::vector<std::string>> EditsOf(std::string table) {
  const std::pair<char, std::string> marks[] = {
      {'@', kTimeBaseAsked},
      {'~', ";:TRIGGER:"},
      {'*', "Delay [^TimeDelay], Holdoff [^Holdoff], Memory Size [^MemorySize]"},
      {'^', "a b"}};
  for (const auto& [mark, text] : marks) table = Filled(table, mark, text);
  auto edits = Rows(Filled(table, '#', "1"));
  std::ranges::copy_if(Rows(Filled(table, '#', "2")), std::back_inserter(edits),
                       [](const auto& row) { return row[0] == "CH2"; });
  for (auto& row : edits) {
    if (row[5].ends_with(':')) row[5] += row[4];
    if (row[6] == "=") row[6] = row[1] + " [" + row[4] + "]";
  }
  return edits;
}

void TryEdit(const std::vector<std::string>& row, bool storedFirst) {
  const std::string &group = row[0], &label = row[1], &given = row[2], &offer = row[3];
  const std::string &entry = row[4], &sent = row[5], &changed = row[6];
  SCOPED_TRACE(group + label + given + " " + entry);
  EditBench bench(given);
  bench.controller.mnuExpand.Click();
  bench.tree.SetExpanded(bench.Node("Acquire"), false);
  const std::vector<std::string> before = bench.Leaves();
  bench.Edit(bench.Node(group, label), [&] {
    const bool typed = offer == "typed";
    EXPECT_EQ(bench.dialog.CtrlDialogKey, label == "Run|Stop" ? label : group + label);
    EXPECT_EQ(bench.dialog.Frame.Text(), label);
    EXPECT_EQ(typed ? offer : Shown(bench.dialog.Combo.Items()), offer);
    EXPECT_EQ(bench.dialog.Combo.Visible(), !typed);
    EXPECT_EQ(bench.dialog.inputTxt.Visible(), typed);
    for (const Button& key : bench.dialog.cmdEnter) EXPECT_EQ(key.Visible(), typed);
    const Milliseconds begin = bench.clock.Now();
    bench.Confirm(entry);
    const Milliseconds took = bench.clock.Now() - begin;
    const bool rests = took > Milliseconds(310) && took < Milliseconds(330);  // 200 ms of it
    EXPECT_TRUE(rests || label != "Probe") << took.count();
    EXPECT_FALSE(bench.dialog.Loaded());
  });
  EXPECT_EQ(bench.Sent(), sent);
  EXPECT_EQ(bench.ChangedSince(before), changed);
  EXPECT_TRUE(bench.document.CtrlChanged);
  EXPECT_TRUE(bench.Told().empty());
  const auto isOpen = [&](auto* name) { return bench.tree.Expanded(bench.Node(name)); };
  EXPECT_EQ(Bits(isOpen("Running Control"), isOpen("Display"), isOpen("Acquire")), "110");
  const std::vector<std::string> shown = bench.Leaves();
  bench.controller.BuildCtrlTree();
  EXPECT_EQ(bench.Leaves(), shown) << "the tree shows what the record holds";
  // On a dead line each command is tried in its order, and the edit ends.
  EditBench dead(given);
  dead.Edit(dead.Node(group, label), [&] {
    dead.port.fails = "Input/output error";
    dead.prompts.AnswerNext(MessageAnswer::Ok, Milliseconds(100));
    dead.At(50, [&] {
      const bool stored = storedFirst && !changed.empty();
      EXPECT_EQ(dead.ChangedSince(before), stored ? label + " [" + entry + "]" : "");
    });
    dead.Confirm(entry);
  });
  EXPECT_EQ(dead.Told(), std::vector<std::string>(Split(sent, ';').size(), "Input/output error"));
  EXPECT_TRUE(dead.document.CtrlChanged);
  dead.ExpectRest();
}

TEST(EditDialog, OkChangesTheRecordTheNodesAndTheInstrument) {
  for (const auto& row : EditsOf(kStoredFirst)) TryEdit(row, true);
  for (const auto& row : EditsOf(kSentFirst)) TryEdit(row, false);
}

TEST(EditDialog, ANumberWithItsUnitKeyGoesOutAsATimeAndAnythingElseStays) {
  for (const auto& row : Rows(R"(
1.5 | n | 0.0015us || 20 | u | 0.02ms || 1 | m | 1.0ms || 1 | p | 0.001ns ||  5  | OK | 5.0s
-2 | m | -2000000.0ns || as it opens | OK | 0.1us || - | OK | - || abc | n | - || 5s | OK | -
)")) {
    SCOPED_TRACE(row[0] + " " + row[1]);
    EditBench bench;
    CtrlDialog& dialog = bench.dialog;
    const bool refused = row[2].empty();
    const std::string before = Listed(bench.settings);
    bench.Edit(bench.Node("Time Base", "Holdoff"), [&] {
      EXPECT_EQ(dialog.inputTxt.Text(), "100.000E-9");
      if (row[0] != "as it opens") dialog.inputTxt.SetText(row[0]);
      const std::size_t key = std::string("munp").find(row[1]);
      Button& button = key == std::string::npos ? dialog.cmdOK : dialog.cmdEnter[key];
      // The second one of a double click finds the edit under way.
      if (!refused) bench.clock.UserAfter(Milliseconds(30), [&] { button.Click(); });
      button.Click();
      EXPECT_EQ(dialog.Loaded(), refused);
    });
    EXPECT_EQ(bench.document.CtrlChanged, !refused);
    EXPECT_EQ(bench.Sent(), refused ? "" : ":TimeBase:Holdoff:" + row[2] + ";" + kTimeBaseAsked);
    EXPECT_EQ(Listed(bench.settings) == before, refused);
    EXPECT_EQ(bench.prompts.shown, std::vector<Message>(refused, Warning("Enter number only")));
  }
}

TEST(EditDialog, CancelActionsAndALineThatIsNotConnectedChangeNothing) {
  EditBench bench;
  bench.settings.Grid = "HALF";  // the node still reads FULL
  const std::string before = Listed(bench.settings);
  bench.Edit(bench.Node("Display", "Grid"), [&] {
    EXPECT_EQ(bench.dialog.Combo.Text(), "FULL");
    bench.dialog.cmdCancel.Click();
    EXPECT_FALSE(bench.dialog.Loaded());
  });
  const auto expect = [&](TreeNode node, const std::vector<Message>& told) {
    bench.tree.Click(node);
    bench.tree.KeyDown(13);
    bench.tree.DoubleClick();
    EXPECT_EQ(std::exchange(bench.prompts.shown, {}), told);
    EXPECT_FALSE(bench.dialog.Loaded());
  };
  for (const char* const group : {"Trigger", "Time Base"}) expect(bench.Node(group), {});
  expect(bench.Node("Time Base", "Memory Size"), {2, Warning("This Item Query Only")});
  expect(bench.Node("Running Control", "Force Trigger"), {});
  EXPECT_EQ(bench.Sent(), ":ForceTrig;:ForceTrig");
  bench.controller.mnuDisconnect.Click();
  const std::vector<Message> asked(2, Warning("Please Connect Oscilloscope First"));
  for (const TreeNode group : bench.tree.Children(bench.tree.First())) {
    expect(group, asked);
    for (const TreeNode leaf : bench.tree.Children(group)) expect(leaf, asked);
  }
  bench.controller.mnuUpload.Click();
  bench.controller.mnuDownLoad.Click();
  EXPECT_EQ(bench.prompts.shown, asked);
  EXPECT_EQ(bench.Sent() + Listed(bench.settings), ":KEY:LOCK:ENABLE" + before);
  EXPECT_FALSE(bench.document.CtrlChanged);
}

TEST(EditDialog, TheVirtualPanelOverUsbNeedsItsFirmwareAndAnyOtherLinkGetsTheKeysAlone) {
  // Link, firmware, and the windows: the keys, which are modal, and the panel.
  for (const auto& row : Rows("0 | 03.01.14 | 00 || 0 | 03.01.15 | 01 || 1 | 03.01.14 | 10 || "
                              "2 | 03.01.14 | 10 || 7 | 03.01.14 | 10")) {
    SCOPED_TRACE(row[0] + " " + row[1]);
    ControllerBench bench(row[0].c_str());
    bench.script.Answer("*IDN?", "TAVIK TECHNOLOGIES,TX-5102CA,S1," + row[1] + "\n");
    bench.Connect();
    std::string windows;
    bench.At(5, [&] {
      windows = Bits(bench.module.keys.Modal(), bench.module.panel.Visible());
      bench.module.main.Close();
    });
    bench.DoubleClick(bench.Node("Virtual Panel"));
    bench.clock.Run(Milliseconds(10));
    EXPECT_EQ(windows, row[2]);
    EXPECT_FALSE(bench.module.keys.Loaded());
    const Message told = Warning(
        "This function can only be used when the DSO version is higher than 03.01.15\r"
        "Current Version is 03.01.14\rPlease contact TAVIK at www.tavik.example");
    EXPECT_EQ(bench.prompts.shown, std::vector<Message>(row[0] + row[2] == "000", told));
  }
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

const std::string kTimeBaseAsked =
    ":TimeBase:TRIGGER DELAY:?;:TimeBase:Holdoff:?;:DATA:SysMemSize:?";

// A document that differs from a new one by these settings: "1=STOP;2=OFF".
struct EditBench : ControllerBench {
  explicit EditBench(const std::string& given = {}) {
    AnswerNumbered("a b");
    port.lies[":TimeBase:RANGE:?"] = "50.00us\n";
    Connect();
    Set(settings, "9=ON;" + given);
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
// the value is not on offer) or the number typed, what is sent ("@" for the questions about the
// time base), the nodes that are new afterwards ("*" for those of the time base), and whether
// record and node change before the command leaves. "#" is either channel.
const char* const kEdits = R"(
Running Control | Run|Stop | - | 2 RUN,STOP | STOP | :STOP | Run|Stop [STOP] | node
Running Control | Run|Stop | - | 2 RUN,STOP | RUN | :RUN | - | node
Running Control | Run|Stop | 25=SINGLE | 2 RUN,STOP | RUN | :KEY:RUN | - | node
Running Control | Run|Stop | 22=VIDEO;25=SINGLE | 2 RUN,STOP | STOP | :STOP | Run|Stop [STOP] | node
CH# | Display | - | 2 ON,OFF | OFF | :CHANNEL#:DISPLAY:OFF | Display [OFF] | node
CH# | Display | - | 2 ON,OFF | ON | :CHANNEL#:DISPLAY:ON;:CHANNEL#:RANGE:1.00V | - | node
CH1 | Volt/Div | 7=1X;14=10X | 11 2.00mV..100mV..5.00V | 2.00mV | :CHANNEL1:RANGE:2.00mV | Volt/Div [2.00mV] | node
CH2 | Volt/Div | 7=1X;14=10X | 11 20.0mV..1.00V..50.0V | 50.0V | :CHANNEL2:RANGE:50.0V | Volt/Div [50.0V] | node
CH1 | Volt/Div | 7=100X;14=1X | 11 200mV..10.0V..500V | 200mV | :CHANNEL1:RANGE:200mV | Volt/Div [200mV] | node
CH2 | Volt/Div | 7=1X;14=1000X | 11 2.00V..100V..5kV | 5kV | :CHANNEL2:RANGE:5kV | Volt/Div [5kV] | node
CH2 | Volt/Div | 7=1X;14=5X | 0 | - | :CHANNEL2:RANGE: | Volt/Div [] | node
CH# | Offset | - | 601 12.00div..0.00div..-12.00div | -12.00div | :CHANNEL#:OFFSET:-12.00div | Offset [-12.00div] | node
CH# | Coupling | - | 2 DC,AC | DC | :CHANNEL#:COUPLING:DC | Coupling [DC] | node
CH# | BW Limit | - | 2 ON,OFF | ON | :CHANNEL#:BWLimit:ON | BW Limit [ON] | node
CH1 | Probe | - | 4 1X,10X,100X,1000X | 10X | :CHANNEL1:PROBE:10X;:CHANNEL1:RANGE:? | Volt/Div [ab3], Probe [10X] | node
CH2 | Probe | - | 4 1X,10X,100X,1000X | 10X | :CHANNEL2:PROBE:10X;:CHANNEL2:RANGE:? | Volt/Div [ab10], Probe [10X] | node
Time Base | Time/Div | - | 33 1.000ns..200.0us..50.00s | 20.00us | :TimeBase:RANGE:20.00us;:TimeBase:RANGE:?;@;:DISPLAY:TYPE:? | Time/Div [50.00us], *, Type [a b39] | wire
Time Base | Delay | - | typed | 5e-4 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:0.5ms;@ | * | wire
Time Base | Delay | - | typed | -1 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:-700000.0ns;@ | * | wire
Time Base | Delay | - | typed | 1.5 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:1s;@ | * | wire
Time Base | Holdoff | - | typed | 1e-6 | :TimeBase:Holdoff:1.0us;@ | * | wire
Time Base | Format | - | 2 Y-T,X-Y | Y-T | :TimeBase:FORMAT:Y-T;:TimeBase:FORMAT:?;@ | *, Format [a b21] | wire
Trigger | Method | - | 3 EDGE,PULSE,VIDEO | EDGE | :TRIGGER:METHOD:EDGE;:TRIGGER:Source:?;:TRIGGER:SLOPE:?;:TRIGGER:MODE:?;:TRIGGER:COUPLING:?;:TRIGGER:LEVEL:? | Slope [a b23], Source [a b24], Mode [a b25], Coupling [a b26], Level [a b33] | wire
Trigger | Method | 22=PULSE | 3 EDGE,PULSE,VIDEO | PULSE | :TRIGGER:METHOD:PULSE;:TRIGGER:Source:?;:TRIGGER:PULSE MODE:?;:TRIGGER:PULSE WIDTH:?;:TRIGGER:MODE:?;:TRIGGER:COUPLING:?;:TRIGGER:LEVEL:? | Source [a b24], Pulse mode [a b27], Pulse width [a b28], Mode [a b25], Coupling [a b26], Level [a b33] | wire
Trigger | Method | 22=VIDEO | 3 EDGE,PULSE,VIDEO | VIDEO | :TRIGGER:METHOD:VIDEO;:TRIGGER:Source:?;:TRIGGER:POLARITY:?;:TRIGGER:SYNC:?;:TRIGGER:LINE_NUM:?;:TRIGGER:VIDEO STANDARD:? | Source [a b24], Polarity [a b29], Sync [a b30], Line number [a b32], Video Standard [a b31] | wire
Trigger | Slope | - | 2 RISING,FALLING | FALLING | :TRIGGER:SLOPE:FALLING | Slope [FALLING] | node
Trigger | Source | - | 5 CH1,CH2,EXT,EXT5,AC | AC | :TRIGGER:Source:AC | Source [AC] | node
Trigger | Mode | - | 3 AUTO,NORMAL,SINGLE | SINGLE | :TRIGGER:MODE:SINGLE | Mode [SINGLE] | node
Trigger | Coupling | - | 4 DC,AC,HF,LF | LF | :TRIGGER:COUPLING:LF | Coupling [LF] | node
Trigger | Level | - | 601 12.00div..0.00div..-12.00div | -0.04div | :TRIGGER:LEVEL:-0.04div | Level [-0.04div] | node
Trigger | Source | 22=PULSE | 4 CH1,CH2,EXT,EXT5 | EXT5 | :TRIGGER:Source:EXT5 | Source [EXT5] | node
Trigger | Pulse mode | 22=PULSE | 6 +LESS THAN,+MORE THAN,+EQUAL,-LESS THAN,-MORE THAN,-EQUAL | -MORE THAN | :TRIGGER:PULSE MODE:-MORE THAN | Pulse mode [-MORE THAN] | node
Trigger | Pulse width | 22=PULSE | typed | 2e-6 | :TRIGGER:PULSE WIDTH:0.002ms;:TRIGGER:PULSE WIDTH:? | Pulse width [a b28] | wire
Trigger | Source | 22=VIDEO | 4 CH1,CH2,EXT,EXT5 | CH2 | :TRIGGER:Source:CH2 | Source [CH2] | node
Trigger | Polarity | 22=VIDEO | 2 NEGATIVE,POSITIVE | NEGATIVE | :TRIGGER:POLARITY:NEGATIVE | Polarity [NEGATIVE] | node
Trigger | Sync | 22=VIDEO | 4 ALL LINE,LINE Number,ODD FIELD,EVEN FIELD | LINE Number | :TRIGGER:SYNC:LINE Number | Sync [LINE Number] | node
Trigger | Sync | 22=VIDEO | 4 ALL LINE,LINE Number,ODD FIELD,EVEN FIELD | - | :TRIGGER:SYNC: | Sync [] | node
Trigger | Line number | 22=VIDEO;31=NTSC | 525 1..263..525 | 525 | :TRIGGER:LINE_NUM:525 | Line number [525] | node
Trigger | Line number | 22=VIDEO;31=PAL/SECAM | 625 1..313..625 | 625 | :TRIGGER:LINE_NUM:625 | Line number [625] | node
Trigger | Line number | 22=VIDEO | 625 1..313..625 | 625 | :TRIGGER:LINE_NUM:625 | Line number [625] | node
Trigger | Video Standard | 22=VIDEO | 2 NTSC,PAL/SECAM | PAL/SECAM | :TRIGGER:VIDEO STANDARD:PAL/SECAM | Video Standard [PAL/SECAM] | node
Acquire | Sampling Mode | - | 2 EQU_TIME,REAL_TIME | EQU_TIME | :ACQUIRE:SAMPLING:EQU_TIME;:ACQUIRE:SAMPLING:? | Sampling Mode [a b34] | wire
Acquire | Acquisition | - | 4 NORMAL,ENVELOPE,AVERAGE,ANALOG | AVERAGE | :ACQUIRE:ACQUISITION:AVERAGE | Acquisition [AVERAGE] | wire
Acquire | Averages | - | 8 2,4,8,16,32,64,128,256 | 256 | :ACQUIRE:AVERAGES:256 | Averages [256] | wire
Acquire | Intensity | - | 100 1%..51%..100% | 100% | :ACQUIRE:INTENSITY:100% | Intensity [100%] | wire
Acquire | Anti-aliasing | - | 2 ON,OFF | ON | :ACQUIRE:ANTI-ALIASING:ON | Anti-aliasing [ON] | wire
Display | Type | - | 2 VECT,DOT | VECT | :DISPLAY:TYPE:VECT;:DISPLAY:TYPE:? | Type [a b39] | wire
Display | Persist | - | 2 ON,OFF | ON | :DISPLAY:PERSIST:ON | Persist [ON] | wire
Display | Grid | - | 3 FULL,HALF,NONE | NONE | :DISPLAY:GRID:NONE | Grid [NONE] | wire
)";

TEST(EditDialog, OkChangesTheRecordTheNodesAndTheInstrument) {
  const std::string table = Filled(Filled(kEdits, '@', kTimeBaseAsked), '*',
                                   "Delay [a b17], Holdoff [a b18], Memory Size [a b19]");
  auto rows = Rows(Filled(table, '#', "1"));
  std::ranges::copy_if(Rows(Filled(table, '#', "2")), std::back_inserter(rows),
                       [](const auto& row) { return row[0] == "CH2"; });
  for (const auto& row : rows) {
    const std::string &group = row[0], &label = row[1], &given = row[2], &offer = row[3];
    const std::string &entry = row[4], &sent = row[5], &changed = row[6];
    SCOPED_TRACE(group + label + given + " " + entry);
    EditBench bench(given);
    bench.controller.mnuExpand.Click();
    bench.tree.SetExpanded(bench.Node("Acquire"), false);
    const std::vector<std::string> before = bench.Leaves();
    bench.Edit(bench.Node(group, label), [&] {
      EXPECT_EQ(bench.dialog.CtrlDialogKey, label == "Run|Stop" ? label : group + label);
      EXPECT_EQ(bench.dialog.Frame.Text(), label);
      EXPECT_EQ(bench.dialog.Combo.Visible() ? Shown(bench.dialog.Combo.Items()) : "typed", offer);
      EXPECT_EQ(bench.dialog.inputTxt.Visible(), offer == "typed");
      for (const Button& key : bench.dialog.cmdEnter) EXPECT_EQ(key.Visible(), offer == "typed");
      const Milliseconds begin = bench.clock.Now();
      bench.Confirm(entry);
      const auto took = (bench.clock.Now() - begin).count();
      EXPECT_TRUE(label != "Probe" || (took > 310 && took < 330)) << "with 200 ms of rest";
      EXPECT_FALSE(bench.dialog.Loaded());
    });
    EXPECT_EQ(bench.Sent(), sent);
    EXPECT_EQ(bench.ChangedSince(before), changed);
    EXPECT_TRUE(bench.document.CtrlChanged && bench.Told().empty());
    const auto isOpen = [&](const char* name) { return bench.tree.Expanded(bench.Node(name)); };
    EXPECT_TRUE(isOpen("Running Control") && isOpen("Display") && !isOpen("Acquire"));
    const std::vector<std::string> shown = bench.Leaves();
    bench.controller.BuildCtrlTree();
    EXPECT_FALSE(isOpen("Display")) << "a plain rebuild folds";
    EXPECT_EQ(bench.Leaves(), shown) << "the tree shows what the record holds";
    // On a dead line each command is tried in its order, and the edit ends.
    EditBench dead(given);
    dead.Edit(dead.Node(group, label), [&] {
      dead.port.fails = "Input/output error";
      dead.prompts.AnswerNext(MessageAnswer::Ok, Milliseconds(100));
      dead.At(50, [&] {
        const bool stored = row[7] == "node" && !changed.empty();
        EXPECT_EQ(dead.ChangedSince(before), stored ? label + " [" + entry + "]" : "");
      });
      dead.Confirm(entry);
    });
    const std::size_t tried = 1 + static_cast<std::size_t>(std::ranges::count(sent, ';'));
    EXPECT_EQ(dead.Told(), std::vector<std::string>(tried, "Input/output error"));
    EXPECT_TRUE(dead.document.CtrlChanged);
    dead.ExpectRest();
  }
}

TEST(EditDialog, ANumberWithItsUnitKeyGoesOutAsATimeAndAnythingElseStays) {
  for (const auto& row : Rows(R"(
1.5 | n | 0.0015us || 1000 | n | 1.0us || 20 | u | 0.02ms || 1 | m | 1.0ms || 1 | p | 0.001ns
-2 | m | -2000000.0ns ||  5  | OK | 5.0s || +5 | OK | 5.0s || 1. | OK | 1.0s || .5 | OK | 0.5s
1e-3 | OK | 1.0ms || 0 | OK | 0.0ns || -1 | OK | -1000000000.0ns || as it opens | OK | 0.1us
- | OK | - || abc | OK | - || abc | n | - || 1,5 | OK | - || inf | u | - || nan | OK | -
0x10 | OK | - || 1.2.3 | OK | - || 5s | OK | -
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
      EXPECT_TRUE(!refused || dialog.inputTxt.Text() == row[0]);
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

TEST(EditDialog, TheVirtualPanelOverUsbNeedsItsFirmware) {
  for (const auto& row : Rows("0 | 03.01.14 | told || 0 | 03.01.15 | - || 7 | 03.01.14 | -")) {
    SCOPED_TRACE(row[0] + " " + row[1]);
    ControllerBench bench(row[0].c_str());
    bench.script.Answer("*IDN?", "TAVIK TECHNOLOGIES,TX-5102CA,S1," + row[1] + "\n");
    bench.Connect();
    bench.At(1000, [&] { bench.module.main.Close(); });
    bench.DoubleClick(bench.Node("Virtual Panel"));
    const Message told = Warning(
        "This function can only be used when the DSO version is higher than 03.01.15\r"
        "Current Version is 03.01.14\rPlease contact TAVIK at www.tavik.example");
    EXPECT_EQ(bench.prompts.shown, std::vector<Message>(row[2] == "told", told));
  }
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "support/ControllerBench.h"

namespace oriolemark {
namespace {

const std::string kTimeBaseAsked =
    ":TimeBase:TRIGGER DELAY:?;:TimeBase:Holdoff:?;:DATA:SysMemSize:?";

// What the instrument answers, whatever it was sent.
const char* const kAnswers = R"(
:CHANNEL1:RANGE:? |  10.0 V || :CHANNEL2:RANGE:? |  10.0 V || :TimeBase:RANGE:? | 50.00us
:TimeBase:TRIGGER DELAY:? | 7 us || :TimeBase:Holdoff:? | 250ns || :DATA:SysMemSize:? | 8000
:TimeBase:FORMAT:? | X-Y || :DISPLAY:TYPE:? | DOT || :ACQUIRE:SAMPLING:? | REAL_TIME
:TRIGGER:PULSE WIDTH:? | 3 us || :TRIGGER:Source:? | EXT || :TRIGGER:SLOPE:? | FALLING
:TRIGGER:MODE:? | NORMAL || :TRIGGER:COUPLING:? | HF || :TRIGGER:LEVEL:? | 0.04div
:TRIGGER:PULSE MODE:? | -EQUAL || :TRIGGER:POLARITY:? | NEGATIVE || :TRIGGER:SYNC:? | ODD FIELD
:TRIGGER:LINE_NUM:? | 7 || :TRIGGER:VIDEO STANDARD:? | NTSC
)";

// A document that differs from a new one by these settings: "1=STOP;2=OFF".
struct EditBench : ControllerBench {
  explicit EditBench(const std::string& given = {}) {
    for (const auto& row : Rows(kAnswers)) port.lies[row[0]] = row[1] + "\n";
    Connect();
    static const std::regex kChange("(\\d+)=([^;]*)");
    const std::string changes = "9=ON;" + given;
    for (std::sregex_iterator at(changes.begin(), changes.end(), kChange), end; at != end; ++at) {
      settings.*kRecord[std::stoul((*at)[1]) - 1] = (*at)[2];
    }
    controller.BuildCtrlTree();
  }
  // The texts of the leaves that are not as before, in their order.
  std::string ChangedSince(const std::vector<std::string>& before) const {
    std::string changed;
    const std::vector<std::string> now = Leaves();
    EXPECT_EQ(now.size(), before.size());
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (i < before.size() && now[i] == before[i]) continue;
      changed += (changed.empty() ? "" : ", ") + now[i];
    }
    return changed;
  }
};

// The rows of a table, those of a channel for both of them.
std::vector<std::vector<std::string>> RowsOfBothChannels(const std::string& table) {
  static const std::regex kMark("#");
  auto rows = Rows(std::regex_replace(table, kMark, "1"));
  for (const auto& row : Rows(std::regex_replace(table, kMark, "2"))) {
    if (row[0] == "CH2") rows.push_back(row);
  }
  return rows;
}

// The node, what differs from a new document, the row picked or the number typed, what is sent ("@"
// for the questions about the time base), the nodes that are new afterwards ("*" for those of the
// time base), and whether record and node change before the command leaves.
const char* const kEdits = R"(
Running Control | Run|Stop | - | STOP | :STOP | Run|Stop [STOP] | node
Running Control | Run|Stop | - | RUN | :RUN | - | node
Running Control | Run|Stop | 25=SINGLE | RUN | :KEY:RUN | - | node
Running Control | Run|Stop | 22=VIDEO;25=SINGLE | STOP | :STOP | Run|Stop [STOP] | node
CH# | Display | - | OFF | :CHANNEL#:DISPLAY:OFF | Display [OFF] | node
CH# | Display | - | ON | :CHANNEL#:DISPLAY:ON;:CHANNEL#:RANGE:1.00V | - | node
CH# | Volt/Div | - | 2.00mV | :CHANNEL#:RANGE:2.00mV | Volt/Div [2.00mV] | node
CH# | Offset | - | -12.00div | :CHANNEL#:OFFSET:-12.00div | Offset [-12.00div] | node
CH# | Coupling | - | DC | :CHANNEL#:COUPLING:DC | Coupling [DC] | node
CH# | BW Limit | - | ON | :CHANNEL#:BWLimit:ON | BW Limit [ON] | node
CH# | Probe | - | 10X | :CHANNEL#:PROBE:10X;:CHANNEL#:RANGE:? | Volt/Div [10.0V], Probe [10X] | node
Time Base | Time/Div | - | 20.00us | :TimeBase:RANGE:20.00us;:TimeBase:RANGE:?;@;:DISPLAY:TYPE:? | Time/Div [50.00us], *, Type [DOT] | wire
Time Base | Delay | - | 5e-4 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:0.5ms;@ | * | wire
Time Base | Delay | - | -1 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:-700000.0ns;@ | * | wire
Time Base | Delay | - | 1.5 | :TimeBase:RANGE:?;:TimeBase:TRIGGER DELAY:1s;@ | * | wire
Time Base | Holdoff | - | 1e-6 | :TimeBase:Holdoff:1.0us;@ | * | wire
Time Base | Format | - | Y-T | :TimeBase:FORMAT:Y-T;:TimeBase:FORMAT:?;@ | *, Format [X-Y] | wire
Trigger | Method | - | EDGE | :TRIGGER:METHOD:EDGE;:TRIGGER:Source:?;:TRIGGER:SLOPE:?;:TRIGGER:MODE:?;:TRIGGER:COUPLING:?;:TRIGGER:LEVEL:? | Slope [FALLING], Source [EXT], Mode [NORMAL], Coupling [HF], Level [0.04div] | wire
Trigger | Method | 22=PULSE | PULSE | :TRIGGER:METHOD:PULSE;:TRIGGER:Source:?;:TRIGGER:PULSE MODE:?;:TRIGGER:PULSE WIDTH:?;:TRIGGER:MODE:?;:TRIGGER:COUPLING:?;:TRIGGER:LEVEL:? | Source [EXT], Pulse mode [-EQUAL], Pulse width [3 us], Mode [NORMAL], Coupling [HF], Level [0.04div] | wire
Trigger | Method | 22=VIDEO | VIDEO | :TRIGGER:METHOD:VIDEO;:TRIGGER:Source:?;:TRIGGER:POLARITY:?;:TRIGGER:SYNC:?;:TRIGGER:LINE_NUM:?;:TRIGGER:VIDEO STANDARD:? | Source [EXT], Polarity [NEGATIVE], Sync [ODD FIELD], Line number [7], Video Standard [NTSC] | wire
Trigger | Slope | - | FALLING | :TRIGGER:SLOPE:FALLING | Slope [FALLING] | node
Trigger | Source | - | AC | :TRIGGER:Source:AC | Source [AC] | node
Trigger | Mode | - | SINGLE | :TRIGGER:MODE:SINGLE | Mode [SINGLE] | node
Trigger | Coupling | - | LF | :TRIGGER:COUPLING:LF | Coupling [LF] | node
Trigger | Level | - | -0.04div | :TRIGGER:LEVEL:-0.04div | Level [-0.04div] | node
Trigger | Source | 22=PULSE | EXT5 | :TRIGGER:Source:EXT5 | Source [EXT5] | node
Trigger | Pulse mode | 22=PULSE | -MORE THAN | :TRIGGER:PULSE MODE:-MORE THAN | Pulse mode [-MORE THAN] | node
Trigger | Pulse width | 22=PULSE | 2e-6 | :TRIGGER:PULSE WIDTH:0.002ms;:TRIGGER:PULSE WIDTH:? | Pulse width [3 us] | wire
Trigger | Source | 22=VIDEO | CH2 | :TRIGGER:Source:CH2 | Source [CH2] | node
Trigger | Polarity | 22=VIDEO | NEGATIVE | :TRIGGER:POLARITY:NEGATIVE | Polarity [NEGATIVE] | node
Trigger | Sync | 22=VIDEO | LINE Number | :TRIGGER:SYNC:LINE Number | Sync [LINE Number] | node
Trigger | Line number | 22=VIDEO | 625 | :TRIGGER:LINE_NUM:625 | Line number [625] | node
Trigger | Video Standard | 22=VIDEO | PAL/SECAM | :TRIGGER:VIDEO STANDARD:PAL/SECAM | Video Standard [PAL/SECAM] | node
Acquire | Sampling Mode | - | EQU_TIME | :ACQUIRE:SAMPLING:EQU_TIME;:ACQUIRE:SAMPLING:? | Sampling Mode [REAL_TIME] | wire
Acquire | Acquisition | - | AVERAGE | :ACQUIRE:ACQUISITION:AVERAGE | Acquisition [AVERAGE] | wire
Acquire | Averages | - | 256 | :ACQUIRE:AVERAGES:256 | Averages [256] | wire
Acquire | Intensity | - | 100% | :ACQUIRE:INTENSITY:100% | Intensity [100%] | wire
Acquire | Anti-aliasing | - | ON | :ACQUIRE:ANTI-ALIASING:ON | Anti-aliasing [ON] | wire
Display | Type | - | VECT | :DISPLAY:TYPE:VECT;:DISPLAY:TYPE:? | Type [DOT] | wire
Display | Persist | - | ON | :DISPLAY:PERSIST:ON | Persist [ON] | wire
Display | Grid | - | NONE | :DISPLAY:GRID:NONE | Grid [NONE] | wire
)";

TEST(EditDialog, OkChangesTheRecordTheNodesAndTheInstrument) {
  const auto filled = [](const std::string& text) {
    static const std::regex kAsked("@"), kRead("\\*");
    return std::regex_replace(std::regex_replace(text, kAsked, kTimeBaseAsked), kRead,
                              "Delay [7 us], Holdoff [250ns], Memory Size [8000]");
  };
  for (const auto& row : RowsOfBothChannels(filled(kEdits))) {
    const std::string &group = row[0], &label = row[1], &given = row[2], &entry = row[3];
    const std::string &sent = row[4], &changed = row[5];
    SCOPED_TRACE(group + label + given + " " + entry);
    EditBench bench(given);
    const std::vector<std::string> before = bench.Leaves();
    Milliseconds took{0};
    bench.Edit(bench.Node(group, label), [&] {
      const bool runState = label == "Run|Stop";
      EXPECT_EQ(bench.dialog.CtrlDialogKey, runState ? label : group + label);
      EXPECT_EQ(bench.dialog.Frame.Text(), label);
      took -= bench.clock.Now();
      bench.Confirm(entry);
      took += bench.clock.Now();
      EXPECT_FALSE(bench.dialog.Loaded());
    });
    EXPECT_EQ(bench.Sent(), sent);
    EXPECT_EQ(bench.ChangedSince(before), changed);
    EXPECT_TRUE(bench.document.CtrlChanged && bench.Told().empty());
    const std::vector<std::string> shown = bench.Leaves();
    bench.controller.BuildCtrlTree();
    EXPECT_EQ(bench.Leaves(), shown) << "the tree shows what the record holds";
    if (label == "Probe") {
      EXPECT_TRUE(took > Milliseconds(310) && took < Milliseconds(330)) << "with 200 ms of rest";
    }
    // On a dead line each command is tried in its order, and the edit ends.
    EditBench dead(given);
    dead.Edit(dead.Node(group, label), [&] {
      dead.port.fails = "Input/output error";
      dead.prompts.AnswerNext(MessageAnswer::Ok, Milliseconds(100));
      dead.At(50, [&] {
        const bool stored = row[6] == "node" && !changed.empty();
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

// The rows of a list, of a long one the first, the middle and the last.
std::string Shown(const std::vector<std::string>& items) {
  std::string shown = std::to_string(items.size());
  if (items.size() > 10) {
    return shown + " " + items.front() + ".." + items[items.size() / 2] + ".." + items.back();
  }
  for (std::size_t i = 0; i < items.size(); ++i) shown += (i == 0 ? " " : ",") + items[i];
  return shown;
}

TEST(EditDialog, TheListsHoldTheirRowsInOrderByTheProbeAndTheStandard) {
  for (const auto& row : RowsOfBothChannels(R"(
Running Control | Run|Stop | - | 2 RUN,STOP || CH# | Display | - | 2 ON,OFF
CH# | Coupling | - | 2 DC,AC || CH# | BW Limit | - | 2 ON,OFF
CH# | Probe | - | 4 1X,10X,100X,1000X || CH# | Offset | - | 601 12.00div..0.00div..-12.00div
Time Base | Time/Div | - | 33 1.000ns..200.0us..50.00s || Time Base | Format | - | 2 Y-T,X-Y
Trigger | Method | - | 3 EDGE,PULSE,VIDEO || Trigger | Source | - | 5 CH1,CH2,EXT,EXT5,AC
Trigger | Source | 22=PULSE | 4 CH1,CH2,EXT,EXT5 || Trigger | Source | 22=VIDEO | 4 CH1,CH2,EXT,EXT5
Trigger | Slope | - | 2 RISING,FALLING || Trigger | Mode | - | 3 AUTO,NORMAL,SINGLE
Trigger | Coupling | - | 4 DC,AC,HF,LF || Trigger | Level | - | 601 12.00div..0.00div..-12.00div
Trigger | Polarity | 22=VIDEO | 2 NEGATIVE,POSITIVE
Trigger | Sync | 22=VIDEO | 4 ALL LINE,LINE Number,ODD FIELD,EVEN FIELD
Trigger | Video Standard | 22=VIDEO | 2 NTSC,PAL/SECAM
Trigger | Pulse mode | 22=PULSE | 6 +LESS THAN,+MORE THAN,+EQUAL,-LESS THAN,-MORE THAN,-EQUAL
Acquire | Sampling Mode | - | 2 EQU_TIME,REAL_TIME
Acquire | Acquisition | - | 4 NORMAL,ENVELOPE,AVERAGE,ANALOG
Acquire | Averages | - | 8 2,4,8,16,32,64,128,256 || Acquire | Intensity | - | 100 1%..51%..100%
Acquire | Anti-aliasing | - | 2 ON,OFF || Display | Type | - | 2 VECT,DOT
Display | Persist | - | 2 ON,OFF || Display | Grid | - | 3 FULL,HALF,NONE
CH1 | Volt/Div | 7=1X;14=10X | 11 2.00mV..100mV..5.00V
CH2 | Volt/Div | 7=1X;14=10X | 11 20.0mV..1.00V..50.0V
CH1 | Volt/Div | 7=100X;14=1X | 11 200mV..10.0V..500V
CH2 | Volt/Div | 7=1X;14=1000X | 11 2.00V..100V..5kV || CH2 | Volt/Div | 7=1X;14=5X | 0
Trigger | Line number | 22=VIDEO;31=NTSC | 525 1..263..525
Trigger | Line number | 22=VIDEO;31=PAL/SECAM | 625 1..313..625
Trigger | Line number | 22=VIDEO;31= | 625 1..313..625
)")) {
    SCOPED_TRACE(row[0] + row[1] + row[2]);
    EditBench bench(row[2]);
    bench.Edit(bench.Node(row[0], row[1]), [&] {
      EXPECT_EQ(Shown(bench.dialog.Combo.Items()), row[3]);
      EXPECT_TRUE(bench.dialog.Combo.Visible());
      EXPECT_FALSE(bench.dialog.inputTxt.Visible() || bench.dialog.cmdEnter[0].Visible());
    });
  }
}

TEST(EditDialog, OpensOnTheValueOfTheNodeAndOneThatIsNotOnOfferSelectsNothing) {
  EditBench bench("22=VIDEO");
  bench.settings.Grid = "HALF";  // the node still reads FULL
  bench.Edit(bench.Node("Display", "Grid"), [&] {
    EXPECT_EQ(bench.dialog.Combo.Text(), "FULL");
    bench.dialog.cmdCancel.Click();
    EXPECT_FALSE(bench.dialog.Loaded());
  });
  EXPECT_EQ(bench.Sent() + bench.settings.Grid, "HALF");
  EXPECT_FALSE(bench.document.CtrlChanged) << "Cancel changes nothing";
  bench.Edit(bench.Node("Trigger", "Sync"), [&] {
    EXPECT_EQ(bench.dialog.Combo.Text(), "");
    EXPECT_EQ(bench.dialog.Combo.ListIndex(), ComboBox::kNone);
    bench.dialog.cmdOK.Click();
  });
  EXPECT_EQ(bench.Sent(), ":TRIGGER:SYNC:");
  EXPECT_EQ(bench.tree.Text(bench.Node("Trigger", "Sync")), "Sync []");
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
    const std::string before = Listed(bench.settings);
    bench.Edit(bench.Node("Time Base", "Holdoff"), [&] {
      EXPECT_FALSE(dialog.Combo.Visible());
      EXPECT_TRUE(dialog.inputTxt.Visible() && dialog.cmdEnter[3].Visible());
      EXPECT_EQ(dialog.inputTxt.Text(), "100.000E-9");
      if (row[0] != "as it opens") dialog.inputTxt.SetText(row[0]);
      const std::size_t key = std::string("munp").find(row[1]);
      (key == std::string::npos ? dialog.cmdOK : dialog.cmdEnter[key]).Click();
      EXPECT_EQ(dialog.Loaded(), row[2].empty());
      if (dialog.Loaded()) {
        EXPECT_EQ(dialog.inputTxt.Text(), row[0]);
      }
    });
    EXPECT_EQ(bench.document.CtrlChanged, !row[2].empty());
    EXPECT_EQ(bench.Sent(),
              row[2].empty() ? "" : ":TimeBase:Holdoff:" + row[2] + ";" + kTimeBaseAsked);
    if (!row[2].empty()) continue;
    EXPECT_EQ(Listed(bench.settings), before);
    EXPECT_EQ(bench.prompts.shown, std::vector<Message>{Warning("Enter number only")});
  }
}

TEST(EditDialog, WithoutAnInstrumentEveryNodeAsksForOneAndWithOneSomeDoNothing) {
  EditBench bench;
  const std::string before = Listed(bench.settings);
  const Message ask = Warning("Please Connect Oscilloscope First");
  const auto expect = [&](TreeNode node, std::size_t asked) {
    bench.tree.Click(node);
    bench.tree.KeyDown(13);
    bench.tree.DoubleClick();
    EXPECT_EQ(std::exchange(bench.prompts.shown, {}), std::vector<Message>(asked, ask));
    EXPECT_FALSE(bench.dialog.Loaded());
  };
  for (const char* const group : {"Trigger", "Time Base"}) expect(bench.Node(group), 0);
  bench.controller.mnuDisconnect.Click();
  for (const TreeNode group : bench.tree.Children(bench.tree.First())) {
    expect(group, 2);
    for (const TreeNode leaf : bench.tree.Children(group)) expect(leaf, 2);
  }
  bench.controller.mnuUpload.Click();
  bench.controller.mnuDownLoad.Click();
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>(2, ask));
  EXPECT_EQ(bench.Sent() + Listed(bench.settings), ":KEY:LOCK:ENABLE" + before);
  EXPECT_FALSE(bench.document.CtrlChanged);
}

TEST(EditDialog, SomeNodesOnlySayOrSendSomething) {
  EditBench bench;
  bench.DoubleClick(bench.Node("Time Base", "Memory Size"));
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{Warning("This Item Query Only")});
  bench.DoubleClick(bench.Node("Running Control", "Force Trigger"));
  EXPECT_EQ(bench.Sent(), ":ForceTrig");
}

TEST(EditDialog, TheVirtualPanelOverUsbNeedsItsFirmware) {
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"0", "03.01.14", true}, {"0", "03.01.15", false}, {"7", "03.01.14", false}};
  for (const auto& [ioType, version, refused] : rows) {
    SCOPED_TRACE(std::string(ioType) + " " + version);
    ControllerBench bench(ioType);
    bench.script.Answer("*IDN?", std::string("TAVIK TECHNOLOGIES,TX-5102CA,S1,") + version + "\n");
    bench.Connect();
    bench.At(1000, [&] { bench.module.main.Close(); });
    bench.DoubleClick(bench.Node("Virtual Panel"));
    const std::vector<std::string> told = {
        "This function can only be used when the DSO version is higher than 03.01.15\r"
        "Current Version is 03.01.14\rPlease contact TAVIK at www.tavik.example"};
    EXPECT_EQ(bench.Told(), refused ? told : std::vector<std::string>{});
  }
}

}  // namespace
}  // namespace oriolemark

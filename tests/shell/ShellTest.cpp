#include <gtest/gtest.h>

#include "shell/CommandLine.h"
#include "support/ProgramBench.h"
#include "support/Tables.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

// Runs the program, opens the dialog, does `work` in it and closes the program.
void Open(ProgramBench& bench, const std::function<void(frmOptions&)>& work) {
  frmOptions& options = bench.module.options;
  bench.At(1000, [&] { bench.module.main.mnuToolsOptions.Click(); });
  bench.At(2000, [&] {
    EXPECT_TRUE(options.Modal());
    work(options);
    EXPECT_FALSE(options.Loaded());
  });
  bench.RunUntil(3000);
}

TEST(CommandLine, IsRefusedOrAnsweredAtItsFirstWordThatAsksForIt) {
  using enum CommandLine::Outcome;
  // The words; and the files, or what the text begins with.
  for (const auto& row : Rows(R"(
- | - || a.orm -style fusion b.cfx | a.orm,b.cfx || --platform x -reverse c | c
-- --help -style | --help,-style || -style -- c.orm | c.orm || a -stylesheet | !-stylesheet needs
-helpful | !unknown option "-helpful"; || a.orm ---help | !unknown option "---help"
x --version -odd | =oriolemark 1.2.3 || --help --version | =usage: || -odd --help | !unknown
)")) {
    const CommandLine line = ReadCommandLine(Split(row[0], ' '), "1.2.3");
    std::string seen = line.outcome == Refusal ? "!" + line.text.substr(12) : "=" + line.text;
    if (line.outcome == Open) seen.clear();
    for (const std::string& file : line.files) seen += (seen.empty() ? "" : ",") + file;
    EXPECT_EQ(seen.substr(0, line.outcome == Open ? seen.npos : row[1].size()), row[1]) << row[0];
    EXPECT_TRUE(line.outcome != Refusal || std::ranges::count(line.text, '\n') == 1) << row[0];
  }
}

// Section and key of each option, what a first run stores of it and what the work below does.
const auto kStored = Rows(R"(
IO Settings | ScopeIOType | 0 | 1 || IO Settings | COM_Port | 1 | 2
IO Settings | GPIB_Addr | 7 | 30 || Refresh | Refresh Type | Single | Auto
Refresh | Refresh Interval | 100 | 250 || IO Settings | BaudRate | 9600 | fast
General | StartupCheckHardware | False | True || General | StartupLoadSheet | False | True
General | StartupLoadCtrl | False | True || Drivers | COM1 | - | /dev/b || Drivers | COM2 | - | b
Drivers | GpibLibrary | - | /y z.so || Drivers | UsbLibrary | - | /u.so
)");
std::string& ValueIn(ProgramBench& bench, const std::vector<std::string>& stored) {
  return bench.store.values[{stored[0], stored[1]}];
}

TEST(Options, ReachTheStoreWithOkAndNotWithCancel) {
  for (const bool ok : {true, false}) {
    SCOPED_TRACE(ok ? "OK" : "Cancel");
    ProgramBench bench;
    bench.store.values.clear();
    bench.usb.devices = 3;
    Open(bench, [&](frmOptions& options) {
      options.PortSelectOption.Select(1);
      options.HardwareCheck.SetValue(true);
      options.SheetStartLoadChk.SetValue(true);
      options.CtrlStartLoadChk.SetValue(true);
      options.OptRefreshType.Select(1);
      options.IntervalCombo.EndEdit(" 2.5e2");
      options.PortCombo.SetListIndex(1);
      options.BaudCombo.EndEdit("fast");
      options.GPIB_AddrCombo.SetListIndex(30);
      options.DeviceCombo.SetListIndex(2);
      options.DeviceOfPortCombo[0].EndEdit(" /dev/b\t");
      options.DeviceOfPortCombo[1].EndEdit("b");
      options.GpibLibraryText.SetText("/y z.so");
      options.UsbLibraryText.SetText("/u.so");
      (ok ? options.cmdOK : options.cmdCancel).Click();
      EXPECT_EQ(bench.module.preferences.link.UsbDevice, ok ? 2 : 0);
    });
    for (const auto& row : kStored) EXPECT_EQ(ValueIn(bench, row), row[ok ? 3 : 2]) << row[1];
  }
}

TEST(Options, ShowWhatTheStoreHoldsAndCanBeConfirmedAsTheyStand) {
  // What is stored: link, port, address, type and interval; the link, port, address and state of
  // the interval shown; and what is stored behind OK.
  for (const auto& row : Rows(R"(
2 | 2 | 0 | Auto | 0 | 2 | COM2 | 0 | on | 2 | 2 | 0 | Auto | 0
7 | -1 | 5 | auto | 1 | 0 | COM1 | 5 | off | 0 | 1 | 5 | Single | 1
1 | 1 | 31 | - | 1 | 1 | COM1 | - | off | 1 | 1 | -1 | Single | 1
)")) {
    SCOPED_TRACE(row[0] + row[1] + row[2] + row[3]);
    ProgramBench bench;
    bench.usb.devices = 0;
    for (std::size_t i = 0; i < 5; ++i) ValueIn(bench, kStored[i]) = row[i];
    Open(bench, [&](frmOptions& options) {
      EXPECT_EQ(std::to_string(options.PortSelectOption.Selected()), row[5]);
      EXPECT_EQ(options.PortCombo.Text(), row[6]);
      EXPECT_EQ(options.GPIB_AddrCombo.Text(), row[7]);
      EXPECT_EQ(options.IntervalCombo.Text(), row[4]);
      EXPECT_EQ(options.IntervalCombo.Enabled(), row[8] == "on");
      EXPECT_EQ(options.DeviceCombo.Text(), "No Device");
      options.IntervalCombo.EndEdit("soon");  // no number: the old one stays
      options.cmdOK.Click();
    });
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(ValueIn(bench, kStored[i]), row[i + 9]) << i;
  }
}

TEST(Options, AnEmptyNameIsKeptAndNoneThatNoFileCanHave) {
  // The library typed, and the one that OK leaves in the store.
  const std::pair<std::string, const char*> rows[] = {
      {" ", ""}, {std::string(4096, 'x'), "/u.so"}, {{"/v\0.so", 6}, "/u.so"}};
  for (const auto& [typed, kept] : rows) {
    ProgramBench bench;
    bench.Store("Drivers", "UsbLibrary", "/u.so");
    bench.module.options.Load();
    bench.module.options.UsbLibraryText.SetText(typed);
    bench.module.options.cmdOK.Click();
    EXPECT_EQ((bench.store.values[{"Drivers", "UsbLibrary"}]), kept);
  }
}

TEST(Options, PortsAreListedAnewAtEachOpeningAndNamesMeanWhatTheBoxesShow) {
  ProgramBench bench;
  frmOptions& options = bench.module.options;
  bench.Store("Drivers", "GpibLibrary", "x.so");
  options.Load();
  EXPECT_TRUE(options.DeviceOfPortCombo[0].Items().empty());
  options.GpibLibraryText.SetText("typed");
  options.Unload();
  bench.port.ports = {{"/dev/ttyS1", std::string("<b>A\0\n", 6)}, {"/dev/ttyUSB0", ""}};
  options.Load();
  EXPECT_EQ(options.ListedMeaning(0), "/dev/ttyS1  <b>A");
  EXPECT_EQ(options.PortMeaning(1), "COM2 is /dev/ttyS1 (<b>A)");
  options.DeviceOfPortCombo[1].SetListIndex(1);
  EXPECT_EQ(options.PortMeaning(1), "COM2 is /dev/ttyUSB0");
  EXPECT_EQ(options.AddressMeaning(), bench.gpib.Meaning()) << "what was typed before is gone";
  bench.prompts.paths = {"/l.so"};
  for (int click = 0; click < 2; ++click) {  // the second one is cancelled
    options.cmdGpibLibrary.Click();
    EXPECT_EQ(options.AddressMeaning(), "After OK, the next connect uses /l.so.");
  }
  options.GpibLibraryText.SetText("");
  EXPECT_EQ(options.AddressMeaning(), "After OK, the next connect uses the built-in choice.");
}

TEST(Options, DropTheLinkBeforeTheyOpenAndLeaveItDown) {
  ProgramBench bench;
  bench.Store("General", "StartupCheckHardware", "True");
  std::string connecting;
  bench.At(900, [&] { connecting = bench.port.written; });
  Open(bench, [&](frmOptions& options) { options.cmdCancel.Click(); });
  EXPECT_EQ(bench.port.written, connecting + ":KEY:LOCK:ENABLE\r");
  EXPECT_TRUE(bench.module.main.picLED_OFF.Visible());
}

TEST(WholeProgram, FirstStepsAreShownFromAStartWithoutALinkStoredUntilTheFirstView) {
  for (const bool stored : {true, false}) {
    ProgramBench bench;
    if (!stored) bench.store.values.clear();
    const Label& steps = bench.module.main.FirstSteps;
    bench.module.main.Load();
    EXPECT_EQ(steps.Visible(), !stored);
    EXPECT_EQ(steps.Text(),
              "1. Choose the link to the oscilloscope: Tools, Options (Ctrl+,)\n"
              "2. Connect: Tools, Connect to Oscilloscope (Alt+T, C)\n"
              "3. Add a waveform: File, New (Ctrl+N), Waveform");
    bench.module.browser.files.Add(ItemKind::Measure);
    bench.module.browser.files.Remove(ItemKind::Measure, 0);
    EXPECT_FALSE(steps.Visible()) << "for good";
  }
}

TEST(WholeProgram, OneLampShinesAndTheStatusGoesTwoSecondsAfterTheLastEvent) {
  ProgramBench bench;
  frmMain& main = bench.module.main;
  for (const int at : {200, 2000}) bench.At(at, [&] { main.mnuToolsConnect.Click(); });
  for (const int at : {8000, 9000}) bench.At(at, [&] { bench.port.onEvent(1009); });
  bench.At(10900, [&] { EXPECT_EQ(main.StatusPanel.Text(), "Status: Parity Error"); });
  bench.At(11100, [&] { EXPECT_EQ(main.StatusPanel.Text(), "Status: "); });
  bench.RunUntil(12000);
  EXPECT_EQ(Bits(main.picLED_ON.Visible(), main.picLED_OFF.Visible()), "10");
}

TEST(WholeProgram, WindowsComeBackWhereTheyStoodUnlessThatIsOutOfSight) {
  for (const bool minimised : {false, true}) {
    ProgramBench bench;
    bench.At(500, [&] { bench.module.main.Minimised = minimised; });
    bench.RunUntil(1000);
    EXPECT_EQ(bench.store.values.contains({"Settings", "MainWidth"}), !minimised);
    EXPECT_EQ(bench.module.main.Place().width, 6500);
  }
  // The stored value, and the place.
  for (const auto& row : Rows(R"(
- | 500,800 || abc | 500,800 || -20.5 | -20.5,-20.5 || -9000 | 400,600 || 15000 | 15000,15000
15001 | 400,600
)")) {
    ProgramBench bench;
    frmPrgress& progress = bench.module.progress;
    progress.screenWidth = progress.screenHeight = 15000;
    for (const char* key : {"ProgressLeft", "ProgressTop"}) bench.Store("Settings", key, row[0]);
    progress.Load();
    EXPECT_EQ(NumberText(progress.Place().left) + "," + NumberText(progress.Place().top), row[1]);
  }
}

TEST(WholeProgram, HelpOpensTheFileBesideTheProgramAndTellsWhenItCannot) {
  ProgramBench bench;
  bench.module.main.mnuHelpContents.Click();
  bench.module.main.ShowHelp(HelpCommand::Context, "#page");
  EXPECT_TRUE(bench.prompts.shown.empty());
  bench.help.error = "no such file";
  bench.module.main.mnuHelpSearchForHelpOn.Click();
  const std::string file = "/program/Oriolemark.hlp";
  using enum HelpCommand;
  EXPECT_EQ(bench.help.opened,
            (decltype(bench.help.opened){
                {file, Contents}, {file + "#page", Context}, {file, PartialKey}}));
  EXPECT_EQ(bench.prompts.shown, std::vector<Message>{{.systemText = "no such file"}});
}

}  // namespace
}  // namespace oriolemark

#include <gtest/gtest.h>

#include "support/ProgramBench.h"

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

void ChangeAll(frmOptions& options) {
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
}

// Section and key of each option, what a first run stores of it and what the work above does.
const std::tuple<const char*, const char*, const char*, const char*> kStored[] = {
    {"General", "StartupCheckHardware", "False", "True"},
    {"General", "StartupLoadSheet", "False", "True"},
    {"General", "StartupLoadCtrl", "False", "True"},
    {"IO Settings", "ScopeIOType", "0", "1"},
    {"IO Settings", "COM_Port", "1", "2"},
    {"IO Settings", "BaudRate", "9600", "fast"},
    {"IO Settings", "GPIB_Addr", "7", "30"},
    {"Refresh", "Refresh Type", "Single", "Auto"},
    {"Refresh", "Refresh Interval", "100", "250"},
};

TEST(Options, ReachTheStoreWithOkAndNotWithCancel) {
  for (const bool ok : {true, false}) {
    SCOPED_TRACE(ok ? "OK" : "Cancel");
    ProgramBench bench;
    bench.store.values.clear();
    bench.usb.devices = 3;
    Open(bench, [&](frmOptions& options) {
      ChangeAll(options);
      (ok ? options.cmdOK : options.cmdCancel).Click();
      EXPECT_EQ(bench.module.preferences.link.UsbDevice, ok ? 2 : 0);
    });
    for (const auto& [section, key, before, after] : kStored) {
      EXPECT_EQ((bench.store.values[{section, key}]), ok ? after : before) << key;
    }
  }
}

TEST(Options, ShowWhatTheStoreHoldsAndCanBeConfirmedAsTheyStand) {
  const struct {
    const char* name;
    const char *io, *port, *address, *type, *interval;  // as stored
    int option;
    const char *portText, *addressText;
    bool intervalEnabled;
    const char *ioAfter, *portAfter, *addressAfter, *typeAfter;
  } kRows[] = {
      {"first run", "0", "1", "7", "Single", "100", 0, "COM1", "7", false, "0", "1", "7", "Single"},
      {"RS232, Auto", "2", "2", "0", "Auto", "0", 2, "COM2", "0", true, "2", "2", "0", "Auto"},
      {"no such port", "1", "3", "30", "Auto", "-5", 1, "COM1", "30", true, "1", "1", "30", "Auto"},
      {"no such link", "7", "-1", "5", "auto", "1", 0, "COM1", "5", false, "0", "1", "5", "Single"},
      {"no such address", "1", "1", "31", "", "1", 1, "COM1", "", false, "1", "1", "-1", "Single"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    ProgramBench bench;
    bench.usb.devices = 0;
    auto& values = bench.store.values;
    bench.Store("IO Settings", "ScopeIOType", row.io);
    bench.Store("IO Settings", "COM_Port", row.port);
    bench.Store("IO Settings", "GPIB_Addr", row.address);
    bench.Store("Refresh", "Refresh Type", row.type);
    bench.Store("Refresh", "Refresh Interval", row.interval);
    Open(bench, [&](frmOptions& options) {
      EXPECT_EQ(options.PortSelectOption.Selected(), row.option);
      EXPECT_EQ(options.PortCombo.Text(), row.portText);
      EXPECT_EQ(options.GPIB_AddrCombo.Text(), row.addressText);
      EXPECT_EQ(options.IntervalCombo.Text(), row.interval);
      EXPECT_EQ(options.IntervalCombo.Enabled(), row.intervalEnabled);
      EXPECT_EQ(options.DeviceCombo.Text(), "No Device");
      options.IntervalCombo.EndEdit("soon");  // no number: the old one stays
      options.cmdOK.Click();
    });
    EXPECT_EQ((values[{"IO Settings", "ScopeIOType"}]), row.ioAfter);
    EXPECT_EQ((values[{"IO Settings", "COM_Port"}]), row.portAfter);
    EXPECT_EQ((values[{"IO Settings", "GPIB_Addr"}]), row.addressAfter);
    EXPECT_EQ((values[{"Refresh", "Refresh Type"}]), row.typeAfter);
    EXPECT_EQ((values[{"Refresh", "Refresh Interval"}]), row.interval);
  }
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

TEST(Options, TabsStepRoundTheEndsAndEnableOnePage) {
  ProgramBench bench;
  Open(bench, [&](frmOptions& options) {
    for (const int expected : {2, 1, 0, 2}) {
      options.tbsOptions.Step(-1);
      EXPECT_EQ(options.tbsOptions.Selected(), expected);
      for (int page = 0; page < frmOptions::kPages; ++page) {
        EXPECT_EQ(options.picOptions[static_cast<std::size_t>(page)].Enabled(), page == expected);
      }
    }
    options.tbsOptions.Step(1);
    EXPECT_EQ(options.tbsOptions.Selected(), 0);
    options.cmdCancel.Click();
  });
}

}  // namespace
}  // namespace oriolemark

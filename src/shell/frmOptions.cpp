#include "shell/frmOptions.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "values/Number.h"

namespace oriolemark {
namespace {

constexpr int kAddresses = 31;
// No bus can hold more instruments than this.
constexpr int kMostDevices = 127;

constexpr int kUsbOption = 0;
constexpr int kGpibOption = 1;
constexpr int kRS232Option = 2;
constexpr int kSingleOption = 0;
constexpr int kAutoOption = 1;

constexpr const char* kNoDevice = "No Device";

// "0", "1" and so on.
std::vector<std::string> Counted(int count) {
  std::vector<std::string> texts;
  for (int i = 0; i < count; ++i) texts.push_back(std::to_string(i));
  return texts;
}

}  // namespace

frmOptions::frmOptions(Preferences& preferences, SerialPort& serial, GpibDriver& gpib,
                       UsbDriver& usb, ScreenColors& colors)
    : tbsOptions(kPages, [this] { tbsOptions_Change(); }),
      PortSelectOption(3),
      OptRefreshType(2, [this](int index) { IntervalCombo.SetEnabled(index == kAutoOption); }),
      cmdOK([this] { cmdOK_Click(); }),
      cmdCancel([this] { Unload(); }),
      preferences_(preferences),
      serial_(serial),
      gpib_(gpib),
      usb_(usb),
      colors_(colors) {
  SetCaption("Options");
}

void frmOptions::Form_Load() {
  tbsOptions.Select(0);
  tbsOptions_Change();
  HardwareCheck.SetValue(preferences_.startup.StartupCheckHardware);
  SheetStartLoadChk.SetValue(preferences_.startup.StartupLoadSheet);
  CtrlStartLoadChk.SetValue(preferences_.startup.StartupLoadCtrl);
  FillLink();
  const bool isAuto = preferences_.refresh.RefreshType == "Auto";
  OptRefreshType.Select(isAuto ? kAutoOption : kSingleOption);
  IntervalCombo.SetEnabled(isAuto);
  IntervalCombo.SetItems({"1", "10", "100", "1000", "10000"});
  IntervalCombo.SetText(std::to_string(preferences_.refresh.RefreshInterval));
}

void frmOptions::FillLink() {
  LinkSettings& link = preferences_.link;
  const bool isGpib = link.ScopeIOType == kLinkGpib;
  const bool isSerial = link.ScopeIOType == kLinkRS232;
  PortSelectOption.Select(isGpib ? kGpibOption : isSerial ? kRS232Option : kUsbOption);
  PortCombo.SetItems({"COM1", "COM2"});
  if (link.COM_Port != 1 && link.COM_Port != 2) link.COM_Port = 1;
  PortCombo.SetListIndex(link.COM_Port - 1);
  BaudCombo.SetItems({"300", "2400", "4800", "9600", "19200", "38400"});
  BaudCombo.SetText(link.BaudRate);
  addressMeaning_ = gpib_.Meaning();
  GPIB_AddrCombo.SetItems(Counted(kAddresses));
  GPIB_AddrCombo.SetText(std::to_string(link.GPIB_Addr));
  const int devices = std::min(usb_.GetDeviceNum(), kMostDevices);
  deviceMeaning_ = usb_.Meaning();
  const std::string colours = colors_.Meaning();
  if (!colours.empty()) deviceMeaning_ += "\n\n" + colours;
  DeviceCombo.SetItems(devices > 0 ? Counted(devices) : std::vector<std::string>{kNoDevice});
  // Each time it opens, the dialog selects the first instrument, even if the user then cancels.
  DeviceCombo.SetListIndex(0);
  link.UsbDevice = 0;
}

void frmOptions::tbsOptions_Change() {
  for (int page = 0; page < kPages; ++page) {
    picOptions[static_cast<std::size_t>(page)].SetEnabled(page == tbsOptions.Selected());
  }
}

void frmOptions::cmdOK_Click() {
  StartupSettings& startup = preferences_.startup;
  startup.StartupCheckHardware = HardwareCheck.Value();
  startup.StartupLoadSheet = SheetStartLoadChk.Value();
  startup.StartupLoadCtrl = CtrlStartLoadChk.Value();

  RefreshSettings& refresh = preferences_.refresh;
  refresh.RefreshType = OptRefreshType.IsSelected(kAutoOption) ? "Auto" : "Single";
  using Limits = std::numeric_limits<int>;
  refresh.RefreshInterval = WholeNumberInReply(IntervalCombo.Text(), Limits::min(), Limits::max())
                                .value_or(refresh.RefreshInterval);

  LinkSettings& link = preferences_.link;
  const bool isGpib = PortSelectOption.IsSelected(kGpibOption);
  const bool isSerial = PortSelectOption.IsSelected(kRS232Option);
  link.ScopeIOType = isGpib ? kLinkGpib : isSerial ? kLinkRS232 : kLinkUsb;
  link.COM_Port = PortCombo.ListIndex() + 1;
  link.BaudRate = BaudCombo.Text();
  link.GPIB_Addr = GPIB_AddrCombo.ListIndex();
  link.UsbDevice = IsNumeric(DeviceCombo.Text()) ? DeviceCombo.ListIndex() : 0;
  Accept();
}

std::string frmOptions::PortMeaning(int index) const {
  const std::string name = "COM" + std::to_string(index + 1);
  const std::string device = serial_.DeviceOf(index + 1);
  return device.empty() ? name + ": no serial device was found for it" : name + " is " + device;
}

}  // namespace oriolemark

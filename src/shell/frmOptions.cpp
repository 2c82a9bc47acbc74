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

constexpr const char* kDriverSection = "Drivers";
constexpr std::array kPortKeys = {"COM1", "COM2"};
constexpr const char* kGpibKey = "GpibLibrary";
constexpr const char* kUsbKey = "UsbLibrary";
// The system opens no longer path.
constexpr std::size_t kLongestPath = 4095;

// Blanks at either end come with a text that was copied from elsewhere.
std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// An adapter describes itself, in any bytes.
std::string OnOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char character) { return static_cast<unsigned char>(character) < ' '; }, ' ');
  return Trimmed(text);
}

// "0", "1" and so on.
std::vector<std::string> Counted(int count) {
  std::vector<std::string> texts;
  for (int i = 0; i < count; ++i) texts.push_back(std::to_string(i));
  return texts;
}

}  // namespace

frmOptions::frmOptions(const OptionsContext& context)
    : tbsOptions(kPages, [this] { tbsOptions_Change(); }),
      PortSelectOption(3),
      OptRefreshType(2, [this](int index) { IntervalCombo.SetEnabled(index == kAutoOption); }),
      cmdGpibLibrary([this] { AskLibrary("GPIB Library", GpibLibraryText); }),
      cmdUsbLibrary([this] { AskLibrary("USB Library", UsbLibraryText); }),
      cmdOK([this] { cmdOK_Click(); }),
      cmdCancel([this] { Unload(); }),
      context_(context),
      preferences_(context.preferences) {
  SetCaption("Options");
}

void frmOptions::Form_Load() {
  tbsOptions.Select(0);
  tbsOptions_Change();
  HardwareCheck.SetValue(preferences_.startup.StartupCheckHardware);
  SheetStartLoadChk.SetValue(preferences_.startup.StartupLoadSheet);
  CtrlStartLoadChk.SetValue(preferences_.startup.StartupLoadCtrl);
  FillDrivers();
  FillLink();
  const bool isAuto = preferences_.refresh.RefreshType == "Auto";
  OptRefreshType.Select(isAuto ? kAutoOption : kSingleOption);
  IntervalCombo.SetEnabled(isAuto);
  IntervalCombo.SetItems({"1", "10", "100", "1000", "10000"});
  IntervalCombo.SetText(std::to_string(preferences_.refresh.RefreshInterval));
}

void frmOptions::FillDrivers() {
  ports_ = context_.serial.ListPorts();
  std::vector<std::string> devices;
  for (const ListedPort& port : ports_) devices.push_back(port.device);
  for (std::size_t i = 0; i < kPorts; ++i) {
    DeviceOfPortCombo[i].SetItems(devices);
    DeviceOfPortCombo[i].SetText(Stored(kPortKeys[i]));
  }
  GpibLibraryText.SetText(Stored(kGpibKey));
  UsbLibraryText.SetText(Stored(kUsbKey));
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
  addressMeaning_ = context_.gpib.Meaning();
  GPIB_AddrCombo.SetItems(Counted(kAddresses));
  GPIB_AddrCombo.SetText(std::to_string(link.GPIB_Addr));
  const int devices = std::min(context_.usb.GetDeviceNum(), kMostDevices);
  deviceMeaning_ = context_.usb.Meaning();
  const std::string colours = context_.colors.Meaning();
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
  KeepDrivers();
  Accept();
}

void frmOptions::KeepDrivers() {
  for (std::size_t i = 0; i < kPorts; ++i) Keep(kPortKeys[i], DeviceOfPortCombo[i].Text());
  Keep(kGpibKey, GpibLibraryText.Text());
  // The driver looks at its settings when it counts the instruments.
  if (Keep(kUsbKey, UsbLibraryText.Text())) context_.usb.GetDeviceNum();
}

std::string frmOptions::Stored(const char* key) const {
  return context_.store.Read(kDriverSection, key).value_or("");
}

// Returns whether the name is another one than before. One that no file can have is not kept.
bool frmOptions::Keep(const char* key, const std::string& name) {
  const std::string kept = Trimmed(name);
  const bool isPath = kept.size() <= kLongestPath && kept.find('\0') == std::string::npos;
  if (!isPath || kept == Stored(key)) return false;
  context_.store.Write(kDriverSection, key, kept);
  return true;
}

void frmOptions::AskLibrary(const char* title, TextBox& box) {
  const std::string path = context_.prompts.AskFileName(
      {.title = title, .filter = "Libraries (*.so*)|*.so*|All files (*.*)|*.*"});
  if (!path.empty()) box.SetText(path);
}

std::string frmOptions::PortMeaning(int index) const {
  const std::string name = "COM" + std::to_string(index + 1);
  const ComboBox& box = DeviceOfPortCombo[static_cast<std::size_t>(index)];
  const std::string device = context_.serial.DeviceOf(index + 1, Trimmed(box.Text()));
  if (device.empty()) return name + ": no serial device was found for it";
  const auto listed = std::ranges::find(ports_, device, &ListedPort::device);
  const std::string description = listed == ports_.end() ? "" : OnOneLine(listed->description);
  return name + " is " + device + (description.empty() ? "" : " (" + description + ")");
}

std::string frmOptions::AddressMeaning() const {
  return Meant(addressMeaning_, kGpibKey, GpibLibraryText);
}

std::string frmOptions::DeviceMeaning() const {
  return Meant(deviceMeaning_, kUsbKey, UsbLibraryText);
}

// A library is opened by the connect, not while its name is typed.
std::string frmOptions::Meant(const std::string& atOpening, const char* key,
                              const Label& box) const {
  const std::string name = Trimmed(box.Text());
  if (name == Stored(key)) return atOpening;
  return "After OK, the next connect uses " + (name.empty() ? "the built-in choice" : name) + ".";
}

std::string frmOptions::ListedMeaning(int entry) const {
  const ListedPort& port = ports_[static_cast<std::size_t>(entry)];
  return OnOneLine(port.device + "  " + port.description);
}

}  // namespace oriolemark

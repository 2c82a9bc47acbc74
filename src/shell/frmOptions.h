#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/Button.h"
#include "platform/CheckBox.h"
#include "platform/ComboBox.h"
#include "platform/Form.h"
#include "platform/GpibDriver.h"
#include "platform/OptionGroup.h"
#include "platform/Prompts.h"
#include "platform/ScreenColors.h"
#include "platform/SerialPort.h"
#include "platform/SettingsStore.h"
#include "platform/TabStrip.h"
#include "platform/TextBox.h"
#include "platform/UsbDriver.h"
#include "shell/SoftwareSetting.h"

namespace oriolemark {

// The objects that the options dialog uses.
struct OptionsContext {
  Preferences& preferences;
  SettingsStore& store;
  Prompts& prompts;
  SerialPort& serial;
  GpibDriver& gpib;
  UsbDriver& usb;
  ScreenColors& colors;
};

// The modal dialog for the user's choices. It works on copies. OK copies them into the preferences;
// the program writes those to the settings store when it closes. The names of devices and libraries
// go to the store at once, because the drivers read them there at each connect. An open link is not
// changed.
class frmOptions : public Form {
 public:
  static constexpr int kPages = 3;
  static constexpr std::size_t kPorts = 2;

  explicit frmOptions(const OptionsContext& context);

  TabStrip tbsOptions;
  std::array<Control, kPages> picOptions;  // the pages; only the selected one is enabled

  OptionGroup PortSelectOption;  // USB, GPIB, RS232
  CheckBox HardwareCheck;
  CheckBox SheetStartLoadChk;
  CheckBox CtrlStartLoadChk;

  OptionGroup OptRefreshType;  // Single, Auto
  ComboBox IntervalCombo;

  ComboBox DeviceCombo{ComboStyle::ListOnly};
  ComboBox GPIB_AddrCombo{ComboStyle::ListOnly};
  ComboBox PortCombo{ComboStyle::ListOnly};
  ComboBox BaudCombo;

  // The names of devices and libraries, UTF-8. Empty for the built-in choice. The entries are the
  // devices that the system listed when the dialog opened.
  std::array<ComboBox, kPorts> DeviceOfPortCombo;
  TextBox GpibLibraryText;
  TextBox UsbLibraryText;
  Button cmdGpibLibrary;  // they ask for a file
  Button cmdUsbLibrary;

  Button cmdOK;
  Button cmdCancel;

  void Form_Load() override;

  // Describes the result of a choice in words (UTF-8): for an entry of `PortCombo`, for the GPIB
  // addresses, for the USB devices. The names above count as they are now.
  std::string PortMeaning(int index) const;
  std::string AddressMeaning() const;
  std::string DeviceMeaning() const;
  // A listed device with its description, on one line.
  std::string ListedMeaning(int entry) const;

 private:
  void FillDrivers();
  void FillLink();
  void KeepDrivers();
  std::string Stored(const char* key) const;
  bool Keep(const char* key, const std::string& name);
  std::string Meant(const std::string& atOpening, const char* key, const Label& box) const;
  void AskLibrary(const char* title, TextBox& box);
  void tbsOptions_Change();
  void cmdOK_Click();

  OptionsContext context_;
  Preferences& preferences_;
  std::vector<ListedPort> ports_;
  // Read once each time the dialog opens, because it may have to load a library.
  std::string addressMeaning_;
  std::string deviceMeaning_;
};

}  // namespace oriolemark

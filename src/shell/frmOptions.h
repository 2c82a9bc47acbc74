#pragma once

#include <array>
#include <string>

#include "platform/Button.h"
#include "platform/CheckBox.h"
#include "platform/ComboBox.h"
#include "platform/Form.h"
#include "platform/GpibDriver.h"
#include "platform/OptionGroup.h"
#include "platform/ScreenColors.h"
#include "platform/SerialPort.h"
#include "platform/TabStrip.h"
#include "platform/UsbDriver.h"
#include "shell/SoftwareSetting.h"

namespace oriolemark {

// The modal dialog for the user's choices. It works on copies. OK copies them into the preferences;
// the program writes those to the settings store when it closes. An open link is not changed.
class frmOptions : public Form {
 public:
  static constexpr int kPages = 3;

  frmOptions(Preferences& preferences, SerialPort& serial, GpibDriver& gpib, UsbDriver& usb,
             ScreenColors& colors);

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

  Button cmdOK;
  Button cmdCancel;

  void Form_Load() override;

  // Describes the result of a choice in words (UTF-8): for an entry of `PortCombo`, for the GPIB
  // addresses, for the USB devices.
  std::string PortMeaning(int index) const;
  const std::string& AddressMeaning() const { return addressMeaning_; }
  const std::string& DeviceMeaning() const { return deviceMeaning_; }

 private:
  void FillLink();
  void tbsOptions_Change();
  void cmdOK_Click();

  Preferences& preferences_;
  SerialPort& serial_;
  GpibDriver& gpib_;
  UsbDriver& usb_;
  ScreenColors& colors_;
  // Read once each time the dialog opens, because it may have to load a library.
  std::string addressMeaning_;
  std::string deviceMeaning_;
};

}  // namespace oriolemark

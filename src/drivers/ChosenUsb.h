#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "drivers/LibusbDriver.h"
#include "platform/SettingsStore.h"
#include "platform/UsbDriver.h"
#include "platform/Waiting.h"

namespace oriolemark {

// How the driver sees time pass, and lets it.
struct UsbTime {
  // Of a clock that only moves forward.
  std::function<std::chrono::milliseconds()> now;
  // Blocks.
  std::function<void(std::chrono::milliseconds)> sleep;
  // Any number that changes while events are served, though not necessarily at each of them.
  std::function<unsigned()> eventsServed;
};

// The system's own clock. `waiting` outlives what is made.
UsbTime MakeUsbTime(Waiting& waiting, std::function<unsigned()> eventsServed);

// The library that the settings store names (section "Drivers", key "UsbLibrary") if it serves,
// else the built-in driver. Chosen at the first use, and again by GetDeviceNum where the settings
// have changed. Nobody who waits for a reply without serving events waits for ever: when nothing
// has been waiting for 5 s, none was served and nothing was written, the count query fails.
class ChosenUsb : public UsbDriver {
 public:
  // The store outlives the driver.
  ChosenUsb(SettingsStore& store, UsbTime time);

  int GetDeviceNum() override;
  bool Write_USB(int device, std::uint8_t byte) override;
  bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) override;
  bool Control_Command_Send(int device, int request, int value, int index) override;
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override;

  // Also tells why the named library does not serve, and what went wrong last.
  std::string Meaning() override;
  // A loaded library gives no cause but silence.
  std::string Problem() override;

 private:
  struct Asked {
    std::string library;
    UsbIds ids;
    bool operator==(const Asked&) const = default;
  };
  // Since when no byte has been waiting, and how many events had been served by then.
  struct Silence {
    std::chrono::milliseconds since;
    unsigned eventsServed;
  };

  Asked ReadSettings() const;
  void Choose(Asked asked);
  UsbDriver& Driver();
  bool SilentTooLong();
  std::string Refusal() const;
  std::string Failure() const;

  SettingsStore& store_;
  UsbTime time_;
  Asked asked_;
  std::unique_ptr<UsbDriver> driver_;  // none before the first use
  LibusbDriver* builtIn_ = nullptr;    // the same, if it is that
  std::string refusal_;                // why the named library does not serve
  std::optional<Silence> silence_;
  bool gaveUp_ = false;  // the last read or write ended by silence
};

}  // namespace oriolemark

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

// The driver's clock and pause.
struct UsbTime {
  // The time of a clock that never goes back.
  std::function<std::chrono::milliseconds()> now;
  // Blocks.
  std::function<void(std::chrono::milliseconds)> sleep;
  // A number that changes while events are served, though not at every event.
  std::function<unsigned()> eventsServed;
};

// The system's own clock. `waiting` must outlive the result.
UsbTime MakeUsbTime(Waiting& waiting, std::function<unsigned()> eventsServed);

// The library that the settings store names (section "Drivers", key "UsbLibrary"). If the library
// cannot be used, the built-in driver. Chosen at the first use, and again by GetDeviceNum if the
// settings have changed. A caller that waits for a reply without serving events does not wait for
// ever. The count query fails after 5 s without a byte to read, an event or a write.
class ChosenUsb : public UsbDriver {
 public:
  // The store must outlive the driver.
  ChosenUsb(SettingsStore& store, UsbTime time);

  int GetDeviceNum() override;
  bool Write_USB(int device, std::uint8_t byte) override;
  bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) override;
  bool Control_Command_Send(int device, int request, int value, int index) override;
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override;

  // Includes the reason why the named library cannot be used, and the last failure.
  std::string Meaning() override;
  // A loaded library reports no causes, so silence is the only one.
  std::string Problem() override;

 private:
  struct Asked {
    std::string library;
    UsbIds ids;
    bool operator==(const Asked&) const = default;
  };
  // The time since when no byte has been waiting, and the event number at that time.
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
  std::unique_ptr<UsbDriver> driver_;  // null before the first use
  LibusbDriver* builtIn_ = nullptr;    // `driver_` if it is the built-in one, else null
  std::string refusal_;                // why the named library cannot be used
  std::optional<Silence> silence_;
  bool gaveUp_ = false;  // the last read or write ended by silence
};

}  // namespace oriolemark

#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/SettingsStore.h"
#include "platform/UsbDriver.h"

struct libusb_context;
struct libusb_device;
struct libusb_device_handle;

namespace oriolemark {

// The ids that identify a USB device as an instrument.
struct UsbIds {
  std::uint16_t vendor = 0;
  std::uint16_t product = 0;
  bool operator==(const UsbIds&) const = default;
};

// The ids that the settings store gives in section "Drivers", keys "UsbVendorId" and "UsbProductId"
// (hexadecimal, with or without "0x"). An id that is missing or malformed has its default.
UsbIds ReadUsbIds(SettingsStore& store);

// Where a device is plugged in: its bus, and the ports on the way. Without ports, its address.
struct UsbPlace {
  int bus = 0;
  std::array<std::uint8_t, 7> ports{};
  int address = 0;
  auto operator<=>(const UsbPlace&) const = default;  // NOLINT(modernize-use-nullptr)
};

// The USB operations over the system's own USB access. The first use of an instrument opens and
// claims it. It stays open until another one is requested or it fails for good. The next use opens
// it again. An instrument that was plugged in again, or switched off and on, answers the first
// control request. Instruments are numbered by their places on the bus. A number that has been used
// means the same place until the instruments are counted again. If the instrument was moved and is
// the only one on the bus, the number means its new place. Every call blocks, for at most about a
// second for each piece of data.
class LibusbDriver : public UsbDriver {
 public:
  explicit LibusbDriver(UsbIds ids) : ids_(ids) {}

  int GetDeviceNum() override;
  bool Write_USB(int device, std::uint8_t byte) override;
  // The buffer is unchanged unless all `count` bytes were received.
  bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) override;
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override;
  bool Control_Command_Send(int device, int request, int value, int index) override;

  // The problem of the last operation that failed, even if later ones succeeded. Empty before that.
  std::string Problem() override { return problem_; }

 private:
  struct CloseContext {
    void operator()(libusb_context* context) const;
  };
  struct CloseHandle {
    void operator()(libusb_device_handle* handle) const;
  };
  struct Release {
    void operator()(libusb_device* device) const;
  };
  using Device = std::unique_ptr<libusb_device, Release>;

  struct ControlRequest {
    int type;
    int request;
    int value = 0;
    int index = 0;
    int count = 0;  // expected bytes, to be read into `received_`
  };

  std::vector<Device> FindInstruments();
  libusb_device* FindAgain(const std::vector<Device>& instruments) const;
  // 0 or an error.
  int Open(int device);
  int Claim(libusb_device* instrument);
  // `result` is a count of bytes or an error. Returns true if it is the wanted count.
  bool Judge(int result, int wanted);
  std::string CureOf(int error) const;
  bool Control(int device, const ControlRequest& request);
  int Transfer(int device, const ControlRequest& request);
  int ReceiveBulk(int count);

  UsbIds ids_;
  std::unique_ptr<libusb_context, CloseContext> context_;
  std::unique_ptr<libusb_device_handle, CloseHandle> handle_;
  int opened_ = -1;                   // the number of the instrument in `handle_`, now or last
  UsbPlace place_;                    // where this instrument is plugged in
  std::vector<UsbPlace> neighbours_;  // the others' places when its number was first used
  std::string node_;                  // the path of the instrument that was tried last
  std::vector<std::uint8_t> received_;
  std::string problem_;
};

}  // namespace oriolemark

#include "drivers/LibusbDriver.h"

#include <libusb.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace oriolemark {
namespace {

// All that is taken for granted of the instrument's USB side. Its maker has published none of it:
// these are assumptions, and this table is the one place to set them right. The ids can be set in
// the settings store as well. The vendor requests 7, 8 and 9 of the screen read are the caller's.
struct InstrumentSide {
  UsbIds ids{.vendor = 0x5458, .product = 0x5000};
  int interface = 0;
  std::uint8_t bulkInEndpoint = 0x82;
  // Vendor requests to the device on the control endpoint.
  std::uint8_t writeByte = 1;      // out, no data: its value is one byte of a command
  std::uint8_t countWaiting = 2;   // in, one byte: how many bytes of a reply wait
  std::uint8_t fetchReply = 3;     // in, as many bytes as are asked for
  unsigned controlTimeOut = 1000;  // ms
  unsigned bulkTimeOut = 1000;     // ms without all that is left
  int bulkRounds = 4;              // time-outs with new data after which a bulk read goes on
};
constexpr InstrumentSide kInstrument;

constexpr int kVendorOut =
    int{LIBUSB_ENDPOINT_OUT} | int{LIBUSB_REQUEST_TYPE_VENDOR} | int{LIBUSB_RECIPIENT_DEVICE};
constexpr int kVendorIn =
    int{LIBUSB_ENDPOINT_IN} | int{LIBUSB_REQUEST_TYPE_VENDOR} | int{LIBUSB_RECIPIENT_DEVICE};
constexpr int kLongestControl = 0xFFFF;

enum class Handle { Keep, GiveUp };

struct Fault {
  int code;
  const char* words;
  Handle handle;
};

constexpr Fault kFaults[] = {
    {LIBUSB_ERROR_NO_DEVICE, "the instrument is not plugged in", Handle::GiveUp},
    {LIBUSB_ERROR_ACCESS,
     "no right to use the instrument: a udev rule that gives its user access is missing",
     Handle::GiveUp},
    {LIBUSB_ERROR_BUSY, "another program uses the instrument", Handle::GiveUp},
    {LIBUSB_ERROR_TIMEOUT, "the instrument does not answer", Handle::Keep},
    {LIBUSB_ERROR_PIPE, "the instrument refuses the request", Handle::Keep},
    {LIBUSB_ERROR_OVERFLOW, "the instrument sends more than was asked for", Handle::Keep},
};

constexpr const char* kShortAnswer = "the instrument sent less than was asked for";

std::uint16_t ReadId(SettingsStore& store, const char* key, std::uint16_t standard) {
  const std::string text = store.Read("Drivers", key).value_or("");
  std::string_view digits = text;
  if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
  const char* const end = digits.data() + digits.size();
  std::uint16_t id = 0;
  const auto [rest, error] = std::from_chars(digits.data(), end, id, 16);
  return error == std::errc() && rest == end ? id : standard;
}

// The bus and the ports on the way, which stay the same as long as the cables do; the device's
// address where the system does not tell the ports.
UsbPlace PlaceOf(libusb_device* device) {
  UsbPlace place{.bus = libusb_get_bus_number(device)};
  const int depth =
      libusb_get_port_numbers(device, place.ports.data(), static_cast<int>(place.ports.size()));
  if (depth <= 0) place.address = libusb_get_device_address(device);
  return place;
}

bool Fits(int count, std::span<std::uint8_t> buffer) {
  return count >= 0 && static_cast<std::size_t>(count) <= buffer.size();
}

}  // namespace

UsbIds ReadUsbIds(SettingsStore& store) {
  return {.vendor = ReadId(store, "UsbVendorId", kInstrument.ids.vendor),
          .product = ReadId(store, "UsbProductId", kInstrument.ids.product)};
}

void LibusbDriver::CloseContext::operator()(libusb_context* context) const {
  libusb_exit(context);
}

void LibusbDriver::CloseHandle::operator()(libusb_device_handle* handle) const {
  // Closing gives the interface back too.
  libusb_close(handle);
}

void LibusbDriver::Release::operator()(libusb_device* device) const {
  libusb_unref_device(device);
}

int LibusbDriver::GetDeviceNum() {
  // Who looks anew may mean another instrument by the same number.
  if (!handle_) opened_ = -1;
  return static_cast<int>(FindInstruments().size());
}

bool LibusbDriver::Write_USB(int device, std::uint8_t byte) {
  return Control_Command_Send(device, kInstrument.writeByte, byte, 0);
}

bool LibusbDriver::Control_Command_Send(int device, int request, int value, int index) {
  if (!Open(device)) return false;
  const int result =
      libusb_control_transfer(handle_.get(), kVendorOut, static_cast<std::uint8_t>(request),
                              static_cast<std::uint16_t>(value), static_cast<std::uint16_t>(index),
                              nullptr, 0, kInstrument.controlTimeOut);
  return Judge(result, 0);
}

bool LibusbDriver::Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) {
  const auto request = phase == kUsbCountPhase ? kInstrument.countWaiting : kInstrument.fetchReply;
  return ReceiveControl(device, request, count, buffer);
}

bool LibusbDriver::ReceiveControl(int device, std::uint8_t request, int count,
                                  std::span<std::uint8_t> buffer) {
  if (count > kLongestControl || !Fits(count, buffer) || !Open(device)) return false;
  received_.assign(static_cast<std::size_t>(count), 0);
  const int result =
      libusb_control_transfer(handle_.get(), kVendorIn, request, 0, 0, received_.data(),
                              static_cast<std::uint16_t>(count), kInstrument.controlTimeOut);
  if (!Judge(result, count)) return false;
  std::copy(received_.begin(), received_.end(), buffer.begin());
  return true;
}

bool LibusbDriver::Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) {
  if (!Fits(count, buffer) || !Open(device)) return false;
  received_.assign(static_cast<std::size_t>(count), 0);
  int result = ReceiveBulk(count);
  if (result == LIBUSB_ERROR_PIPE &&
      libusb_clear_halt(handle_.get(), kInstrument.bulkInEndpoint) == LIBUSB_SUCCESS) {
    result = ReceiveBulk(count);
  }
  if (!Judge(result, count)) return false;
  std::copy(received_.begin(), received_.end(), buffer.begin());
  return true;
}

// Fills `received_` from its start. What came before a time-out is kept, and the rest is asked for,
// as long as more comes each time.
int LibusbDriver::ReceiveBulk(int count) {
  int have = 0;
  for (int round = 0; have < count; ++round) {
    int more = 0;
    const int error =
        libusb_bulk_transfer(handle_.get(), kInstrument.bulkInEndpoint, received_.data() + have,
                             count - have, &more, kInstrument.bulkTimeOut);
    have += std::clamp(more, 0, count - have);
    if (error == LIBUSB_SUCCESS) return have;
    const bool goesOn =
        error == LIBUSB_ERROR_TIMEOUT && more > 0 && round + 1 < kInstrument.bulkRounds;
    if (!goesOn && have < count) return error;
  }
  return have;
}

std::vector<LibusbDriver::Device> LibusbDriver::FindInstruments() {
  std::vector<Device> found;
  if (!context_) {
    libusb_context* context = nullptr;
    if (libusb_init(&context) != LIBUSB_SUCCESS) return found;
    context_.reset(context);
  }
  libusb_device** list = nullptr;
  const ssize_t count = libusb_get_device_list(context_.get(), &list);
  for (ssize_t i = 0; i < count; ++i) {
    libusb_device_descriptor descriptor{};
    if (libusb_get_device_descriptor(list[i], &descriptor) != LIBUSB_SUCCESS) continue;
    const UsbIds ids{.vendor = descriptor.idVendor, .product = descriptor.idProduct};
    if (ids == ids_) found.emplace_back(libusb_ref_device(list[i]));
  }
  if (count >= 0) libusb_free_device_list(list, /*unref_devices=*/1);
  std::sort(found.begin(), found.end(), [](const Device& left, const Device& right) {
    return PlaceOf(left.get()) < PlaceOf(right.get());
  });
  return found;
}

bool LibusbDriver::Open(int device) {
  if (handle_ && opened_ == device) return true;
  handle_.reset();
  const std::vector<Device> instruments = FindInstruments();
  auto found = instruments.end();
  if (opened_ == device) {
    // One that was unplugged is not replaced by its neighbour, which takes over its number.
    found = std::find_if(instruments.begin(), instruments.end(),
                         [this](const Device& one) { return PlaceOf(one.get()) == place_; });
  } else if (device >= 0 && static_cast<std::size_t>(device) < instruments.size()) {
    found = instruments.begin() + device;
  }
  if (found == instruments.end()) return Judge(LIBUSB_ERROR_NO_DEVICE, 0);
  opened_ = device;
  place_ = PlaceOf(found->get());
  return Claim(found->get());
}

bool LibusbDriver::Claim(libusb_device* instrument) {
  libusb_device_handle* handle = nullptr;
  if (const int error = libusb_open(instrument, &handle); error != LIBUSB_SUCCESS) {
    return Judge(error, 0);
  }
  handle_.reset(handle);
  // A driver of the system that took the instrument for something else steps back meanwhile.
  libusb_set_auto_detach_kernel_driver(handle, 1);
  return Judge(libusb_claim_interface(handle, kInstrument.interface), 0);
}

bool LibusbDriver::Judge(int result, int wanted) {
  if (result == wanted) return true;
  if (result >= 0) {
    problem_ = kShortAnswer;
    return false;
  }
  const auto* const fault = std::find_if(std::begin(kFaults), std::end(kFaults),
                                         [result](const Fault& row) { return row.code == result; });
  const bool known = fault != std::end(kFaults);
  problem_ = known ? fault->words : libusb_strerror(result);
  if (!known || fault->handle == Handle::GiveUp) handle_.reset();
  return false;
}

}  // namespace oriolemark

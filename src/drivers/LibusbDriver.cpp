#include "drivers/LibusbDriver.h"

#include <libusb.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "drivers/DeviceRights.h"

namespace oriolemark {
namespace {

// The assumptions about the instrument's USB side. Its maker has published nothing about it.
// Correct them in this table only. The ids can also be set in the settings store. The caller sends
// the vendor requests 7, 8 and 9 of the screen read.
struct InstrumentSide {
  UsbIds ids{.vendor = 0x5458, .product = 0x5000};
  int interface = 0;
  std::uint8_t bulkInEndpoint = 0x82;
  // Vendor requests to the device on the control endpoint.
  std::uint8_t writeByte = 1;      // out, no data; its value is one byte of a command
  std::uint8_t countWaiting = 2;   // in, one byte: the number of waiting reply bytes
  std::uint8_t fetchReply = 3;     // in, the requested number of bytes
  unsigned controlTimeOut = 1000;  // ms
  unsigned bulkTimeOut = 1000;     // ms to receive the rest
  int bulkRounds = 4;              // the most tries of a bulk read that times out with new data
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
    {LIBUSB_ERROR_NO_DEVICE, "The instrument was not found on USB. Switch it on and plug it in.",
     Handle::GiveUp},
    {LIBUSB_ERROR_ACCESS, "You do not have permission to use the instrument.", Handle::GiveUp},
    {LIBUSB_ERROR_BUSY, "Another program is using the instrument. Close that program.",
     Handle::GiveUp},
    {LIBUSB_ERROR_TIMEOUT, "The instrument does not answer. Switch it off and on.", Handle::Keep},
    {LIBUSB_ERROR_PIPE, "The instrument refused the request.", Handle::Keep},
    {LIBUSB_ERROR_OVERFLOW, "The instrument sent more than was requested.", Handle::Keep},
};

constexpr const char* kShortAnswer = "The instrument sent less than was requested.";
constexpr const char* kInstallRule =
    "Install the udev rule 60-oriolemark.rules (the manual explains how under Connecting), then "
    "plug the instrument in again.";

std::string Digits(int number, int base, std::size_t width) {
  char text[16];
  const std::string digits(text, std::to_chars(text, text + sizeof text, number, base).ptr);
  return std::string(width - std::min(width, digits.size()), '0') + digits;
}

std::string NodeOf(libusb_device* device) {
  return "/dev/bus/usb/" + Digits(libusb_get_bus_number(device), 10, 3) + "/" +
         Digits(libusb_get_device_address(device), 10, 3);
}

std::uint16_t ReadId(SettingsStore& store, const char* key, std::uint16_t standard) {
  const std::string text = store.Read("Drivers", key).value_or("");
  std::string_view digits = text;
  if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
  const char* const end = digits.data() + digits.size();
  std::uint16_t id = 0;
  const auto [rest, error] = std::from_chars(digits.data(), end, id, 16);
  return error == std::errc() && rest == end ? id : standard;
}

// The bus and the ports on the way. They are the same as long as the cables are. If the system does
// not report the ports, the device's address.
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
  // Closing also releases the interface.
  libusb_close(handle);
}

void LibusbDriver::Release::operator()(libusb_device* device) const {
  libusb_unref_device(device);
}

int LibusbDriver::GetDeviceNum() {
  const std::vector<Device> instruments = FindInstruments();
  const bool held = handle_ && std::ranges::any_of(instruments, [this](const Device& one) {
                      return PlaceOf(one.get()) == place_;
                    });
  // After a new count the same number may mean another instrument.
  if (!held) opened_ = -1;
  return static_cast<int>(instruments.size());
}

bool LibusbDriver::Write_USB(int device, std::uint8_t byte) {
  return Control_Command_Send(device, kInstrument.writeByte, byte, 0);
}

bool LibusbDriver::Control_Command_Send(int device, int request, int value, int index) {
  return Control(device, {.type = kVendorOut, .request = request, .value = value, .index = index});
}

bool LibusbDriver::Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) {
  if (count > kLongestControl || !Fits(count, buffer)) return false;
  const auto request = phase == kUsbCountPhase ? kInstrument.countWaiting : kInstrument.fetchReply;
  if (!Control(device, {.type = kVendorIn, .request = request, .count = count})) return false;
  std::copy(received_.begin(), received_.end(), buffer.begin());
  return true;
}

// A handle stays open after its instrument is unplugged, but every request fails. If the instrument
// was plugged in again, the request is repeated with a new handle. A bulk transfer is not repeated,
// because the instrument has lost the selection for it.
bool LibusbDriver::Control(int device, const ControlRequest& request) {
  const bool isKept = handle_ && opened_ == device;
  received_.assign(static_cast<std::size_t>(request.count), 0);
  int result = Transfer(device, request);
  if (result == LIBUSB_ERROR_NO_DEVICE && isKept) {
    handle_.reset();
    result = Transfer(device, request);
  }
  return Judge(result, request.count);
}

int LibusbDriver::Transfer(int device, const ControlRequest& request) {
  if (const int error = Open(device); error != LIBUSB_SUCCESS) return error;
  return libusb_control_transfer(
      handle_.get(), static_cast<std::uint8_t>(request.type),
      static_cast<std::uint8_t>(request.request), static_cast<std::uint16_t>(request.value),
      static_cast<std::uint16_t>(request.index), received_.data(),
      static_cast<std::uint16_t>(request.count), kInstrument.controlTimeOut);
}

bool LibusbDriver::Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) {
  if (!Fits(count, buffer)) return false;
  if (const int error = Open(device); error != LIBUSB_SUCCESS) return Judge(error, count);
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

// Fills `received_` from its start. Bytes that arrived before a time-out are kept. The rest is
// requested again as long as each try receives something.
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

int LibusbDriver::Open(int device) {
  if (handle_ && opened_ == device) return LIBUSB_SUCCESS;
  handle_.reset();
  const std::vector<Device> instruments = FindInstruments();
  libusb_device* const found = opened_ == device ? FindAgain(instruments) : nullptr;
  if (found != nullptr) return Claim(found);
  const bool isNew = opened_ != device && device >= 0;
  if (!isNew || static_cast<std::size_t>(device) >= instruments.size()) {
    return LIBUSB_ERROR_NO_DEVICE;
  }
  opened_ = device;
  neighbours_.clear();
  for (const Device& one : instruments) neighbours_.push_back(PlaceOf(one.get()));
  neighbours_.erase(neighbours_.begin() + device);
  return Claim(instruments[static_cast<std::size_t>(device)].get());
}

// Finds the instrument at its old place. If it is not there, returns the only instrument on the
// bus, unless that one was a neighbour of the old place.
libusb_device* LibusbDriver::FindAgain(const std::vector<Device>& instruments) const {
  for (const Device& one : instruments) {
    if (PlaceOf(one.get()) == place_) return one.get();
  }
  if (instruments.size() != 1) return nullptr;
  libusb_device* const only = instruments.front().get();
  const bool isNeighbour =
      std::find(neighbours_.begin(), neighbours_.end(), PlaceOf(only)) != neighbours_.end();
  return isNeighbour ? nullptr : only;
}

int LibusbDriver::Claim(libusb_device* instrument) {
  place_ = PlaceOf(instrument);
  node_ = NodeOf(instrument);
  libusb_device_handle* handle = nullptr;
  if (const int error = libusb_open(instrument, &handle); error != LIBUSB_SUCCESS) return error;
  handle_.reset(handle);
  // A system driver that has claimed the instrument is detached meanwhile.
  libusb_set_auto_detach_kernel_driver(handle, 1);
  const int error = libusb_claim_interface(handle, kInstrument.interface);
  // Requests need the interface.
  if (error != LIBUSB_SUCCESS) handle_.reset();
  return error;
}

// The part of the cure that depends on the ids or on the device, with a blank in front.
std::string LibusbDriver::CureOf(int error) const {
  if (error == LIBUSB_ERROR_NO_DEVICE) {
    return " The program looks for the ids " + Digits(ids_.vendor, 16, 4) + ":" +
           Digits(ids_.product, 16, 4) + ". lsusb lists the ids on the bus.";
  }
  if (error != LIBUSB_ERROR_ACCESS) return {};
  const std::string group = GroupOf(node_, "");
  return " " + (group.empty() ? kInstallRule : JoinGroup(group));
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
  problem_ = (known ? fault->words : libusb_strerror(result)) + CureOf(result);
  if (!known || fault->handle == Handle::GiveUp) handle_.reset();
  return false;
}

}  // namespace oriolemark

#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace oriolemark {

// The two phases of a read.
inline constexpr int kUsbCountPhase = 0;
inline constexpr int kUsbFetchPhase = 1;

// Byte-level access to the instrument's USB interface. Every operation takes the device index, from
// 0; false means failure.
class UsbDriver {
 public:
  virtual ~UsbDriver() = default;
  // Number of instruments on the bus.
  virtual int GetDeviceNum() = 0;
  virtual bool Write_USB(int device, std::uint8_t byte) = 0;
  // The count phase, with a count of 1: how many bytes of the reply wait goes into the buffer's
  // first byte. The fetch phase: fetches `count` bytes. May block up to 2 ms where none waits.
  virtual bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) = 0;
  virtual bool Control_Command_Send(int device, int request, int value, int index) = 0;
  virtual bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) = 0;
  // Which library does the work, or what is missing and where it was looked for: plain text for the
  // user, UTF-8.
  virtual std::string Meaning() { return {}; }
  // Cause and cure of the last failure: plain text for the user, UTF-8; empty where the driver does
  // not know them.
  virtual std::string Problem() { return {}; }
};

}  // namespace oriolemark

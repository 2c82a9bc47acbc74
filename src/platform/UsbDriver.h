#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace oriolemark {

// The two phases of a read.
inline constexpr int kUsbCountPhase = 0;
inline constexpr int kUsbFetchPhase = 1;

// Byte-level access to the instrument's USB interface. `device` is the index of an instrument, from
// 0. An operation returns false when it fails.
class UsbDriver {
 public:
  virtual ~UsbDriver() = default;
  // Number of instruments on the bus.
  virtual int GetDeviceNum() = 0;
  virtual bool Write_USB(int device, std::uint8_t byte) = 0;
  // In the count phase `count` is 1, and the buffer's first byte receives the number of reply bytes
  // that are waiting; this may block for up to 2 ms while there are none. The fetch phase reads
  // `count` bytes.
  virtual bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) = 0;
  virtual bool Control_Command_Send(int device, int request, int value, int index) = 0;
  virtual bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) = 0;
  // Names the library in use, or what is missing and where the search looked. Plain text for the
  // user, UTF-8.
  virtual std::string Meaning() { return {}; }
  // Cause and cure of the last failure. Plain text for the user, UTF-8; empty if the driver does
  // not know them.
  virtual std::string Problem() { return {}; }
};

}  // namespace oriolemark

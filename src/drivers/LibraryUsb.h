#pragma once

#include "drivers/SharedLibrary.h"
#include "platform/UsbDriver.h"

namespace oriolemark {

// The USB operations of a library that is opened at run time. Where it cannot be opened or lacks an
// operation, the bus is empty and everything fails.
class LibraryUsb : public UsbDriver {
 public:
  explicit LibraryUsb(const std::string& name);

  bool IsOpen() const { return library_.IsOpen(); }
  // Why it is not open, in words.
  const std::string& Reason() const { return library_.Reason(); }

  int GetDeviceNum() override;
  bool Write_USB(int device, std::uint8_t byte) override;
  // These refuse a count beyond the buffer: the library would write behind it.
  bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) override;
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override;
  bool Control_Command_Send(int device, int request, int value, int index) override;

 private:
  SharedLibrary library_;
};

}  // namespace oriolemark

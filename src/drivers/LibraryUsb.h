#pragma once

#include <vector>

#include "drivers/SharedLibrary.h"
#include "platform/UsbDriver.h"

namespace oriolemark {

// The USB operations of a library that is opened at run time. If it cannot be opened or lacks an
// operation, the bus is empty and every call fails.
class LibraryUsb : public UsbDriver {
 public:
  explicit LibraryUsb(const std::string& name);

  bool IsOpen() const { return library_.IsOpen(); }
  // The reason why it is not open, as text.
  const std::string& Reason() const { return library_.Reason(); }

  int GetDeviceNum() override;
  bool Write_USB(int device, std::uint8_t byte) override;
  // These refuse a count beyond the buffer, because the library would write past its end.
  bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) override;
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override;
  bool Control_Command_Send(int device, int request, int value, int index) override;

 private:
  // Calls the library with a separate buffer. A call that fails halfway leaves the caller's buffer
  // unchanged. A library that delivers whole packets has space for them.
  template <typename Call>
  bool Fetch(int count, std::span<std::uint8_t> buffer, Call call);

  SharedLibrary library_;
  std::vector<std::uint8_t> fetched_;  // kept, because clearing it takes longer than a call
};

}  // namespace oriolemark

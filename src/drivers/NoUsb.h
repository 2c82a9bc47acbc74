#pragma once

#include "platform/UsbDriver.h"

namespace oriolemark {

// Stands in where no USB access is to be had: an empty bus.
class NoUsb : public UsbDriver {
 public:
  int GetDeviceNum() override { return 0; }
  bool Write_USB(int, std::uint8_t) override { return false; }
  bool Read_USB(int, int, int, std::span<std::uint8_t>) override { return false; }
  bool Control_Command_Send(int, int, int, int) override { return false; }
  bool Bulk_DataTransfer_Read(int, int, std::span<std::uint8_t>) override { return false; }
};

}  // namespace oriolemark

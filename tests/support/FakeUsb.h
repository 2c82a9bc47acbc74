#pragma once

#include <limits>
#include <string>
#include <vector>

#include "platform/UsbDriver.h"
#include "support/InstrumentScript.h"
#include "support/VirtualClock.h"

namespace oriolemark {

// A USB bus with one scripted instrument. An empty poll takes 2 ms, and after 5 s of nothing else
// the driver gives up.
class FakeUsb : public UsbDriver {
 public:
  static constexpr int kNever = std::numeric_limits<int>::max();

  FakeUsb(VirtualClock& clock, InstrumentScript& script) : clock_(clock), script_(script) {}

  // The instrument has bytes to read from then on.
  void Offer(const std::string& bytes, Milliseconds delay = Milliseconds(0));

  int GetDeviceNum() override { return devices; }
  bool Write_USB(int device, std::uint8_t byte) override;
  bool Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) override;
  bool Control_Command_Send(int device, int request, int value, int index) override;
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override;

  int devices = 1;
  std::string written;                 // every byte, terminators and all
  std::vector<std::string> transfers;  // "control 0 8 0 80" and "bulk 0 76800"
  std::string screen;                  // what the bulk read gives, from its first byte on
  // How many more calls of each kind succeed.
  int writesLeft = kNever;
  int countsLeft = kNever;
  int fetchesLeft = kNever;
  int transfersLeft = kNever;

 private:
  bool Fetch(int count, std::span<std::uint8_t> buffer);

  VirtualClock& clock_;
  InstrumentScript& script_;
  std::string frame_;
  std::string offered_;
  Milliseconds readyAt_{0};
  int emptyPolls_ = 0;
};

}  // namespace oriolemark

#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/UsbDriver.h"
#include "support/InstrumentScript.h"
#include "support/VirtualClock.h"

namespace oriolemark {

// A USB bus with one scripted instrument. An empty poll takes 2 ms, and after 5 s of nothing else
// the driver gives up.
class FakeUsb : public UsbDriver {
 public:
  FakeUsb(VirtualClock& clock, InstrumentScript& script) : clock_(clock), script_(script) {}

  // The instrument has bytes to read from then on.
  void Offer(const std::string& bytes, Milliseconds delay = Milliseconds(0)) {
    offered_ += bytes;
    readyAt_ = clock_.Now() + delay;
  }

  int GetDeviceNum() override { return devices; }
  bool Write_USB(int, std::uint8_t byte) override {
    if (writesLeft-- <= 0) return false;
    written += static_cast<char>(byte);
    if (byte != '\r') {
      frame_ += static_cast<char>(byte);
    } else if (const auto exchange = script_.Hear(std::exchange(frame_, ""))) {
      Offer(exchange->reply, exchange->delay);
    }
    return true;
  }
  bool Read_USB(int, int phase, int count, std::span<std::uint8_t> buffer) override {
    if (phase != 0) return fetchesLeft-- > 0 && Take(offered_, count, buffer);
    if (countsLeft-- <= 0) return false;
    const bool ready = !offered_.empty() && clock_.Now() >= readyAt_;
    buffer[0] = ready ? static_cast<std::uint8_t>(std::min<std::size_t>(offered_.size(), 255)) : 0;
    emptyPolls_ = ready ? 0 : emptyPolls_ + 1;
    if (!ready) clock_.Block(Milliseconds(2));
    return emptyPolls_ < 2500;
  }
  bool Control_Command_Send(int device, int request, int value, int index) override {
    transfers.push_back("control");
    for (const int number : {device, request, value, index}) {
      transfers.back() += " " + std::to_string(number);
    }
    return transfersLeft-- > 0;
  }
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override {
    transfers.push_back("bulk " + std::to_string(device) + " " + std::to_string(count));
    return transfersLeft-- > 0 && Take(screen, count, buffer);
  }

  int devices = 1;
  std::string written;                 // every byte, terminators and all
  std::vector<std::string> transfers;  // "control 0 8 0 80" and "bulk 0 76800"
  std::string screen;                  // what the bulk read gives, from its first byte on
  // How many more calls of each kind succeed.
  static constexpr int kAll = 1'000'000'000;
  int writesLeft = kAll;
  int countsLeft = kAll;
  int fetchesLeft = kAll;
  int transfersLeft = kAll;

 private:
  static bool Take(std::string& from, int count, std::span<std::uint8_t> buffer) {
    const std::size_t taken =
        std::min({from.size(), static_cast<std::size_t>(count), buffer.size()});
    std::copy_n(from.begin(), taken, buffer.begin());
    from.erase(0, taken);
    return true;
  }

  VirtualClock& clock_;
  InstrumentScript& script_;
  std::string frame_;
  std::string offered_;
  Milliseconds readyAt_{0};
  int emptyPolls_ = 0;
};

}  // namespace oriolemark

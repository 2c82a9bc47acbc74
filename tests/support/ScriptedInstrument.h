#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <utility>
#include <vector>

#include "platform/GpibDriver.h"
#include "platform/UsbDriver.h"
#include "support/VirtualClock.h"

namespace oriolemark {

// What a scripted instrument has heard and what it will say, the same over every transport. Answers
// are given in their order, each to the first command that reads as the script says; every other
// command is only noted.
struct InstrumentScript {
  struct Exchange {
    std::string command;
    std::string reply;
    Milliseconds delay;
  };

  // `reply` goes out as it stands, line end and all.
  void Answer(std::string command, std::string reply, Milliseconds delay = Milliseconds(1)) {
    exchanges.push_back({std::move(command), std::move(reply), delay});
  }

  // The instrument hears a command, and gives an exchange without a reply where it has none.
  Exchange Hear(const std::string& command) {
    sent.push_back(command);
    if (exchanges.empty() || exchanges.front().command != command) return {};
    const Exchange taken = exchanges.front();
    exchanges.pop_front();
    return taken;
  }

  std::vector<std::string> sent;   // commands in order, without their terminators
  std::deque<Exchange> exchanges;  // answers that nothing has asked for
};

// A GPIB interface with a scripted instrument. A read with no reply at hand blocks for the ten
// seconds of the device's time-out and fails.
class FakeGpib : public GpibDriver {
 public:
  FakeGpib(VirtualClock& clock, InstrumentScript& script) : clock_(clock), script_(script) {}

  int ibdev(int board, int primary, int secondary, int timeout, int eot, int eos) override {
    return Do("ibdev", {board, primary, secondary, timeout, eot, eos}) ? 3 : -1;
  }
  void ibclr(int device) override { Do("ibclr", {device}); }
  void ibonl(int device, int online) override { Do("ibonl", {device, online}); }
  void ibwrt(int device, std::string_view bytes) override {
    const std::string command(bytes);
    if (Do("ibwrt", {device}, " " + command)) reply_ += script_.Hear(command).reply;
  }
  void ibrd(int device, std::span<char> buffer) override {
    if (!Do("ibrd", {device, static_cast<int>(buffer.size())})) return;
    if (reply_.empty()) {
      clock_.Block(Milliseconds(10000));
      status_ = {.ibsta = kGpibErr | 0x4000, .iberr = 6};
      return;
    }
    const std::size_t count = std::min(buffer.size(), reply_.size());
    std::copy_n(reply_.begin(), count, buffer.begin());
    reply_.erase(0, count);
    if (reply_.empty()) status_.ibsta = kGpibEnd;
  }
  const GpibStatus& Status() const override { return status_; }
  std::string Problem() override { return {}; }

  std::string calls;                           // such as "ibwrt 3 *IDN?; ibonl 3 0; "
  std::map<std::string, GpibStatus> failures;  // what each call of this name leaves

 private:
  bool Do(const std::string& name, const std::vector<int>& numbers, const std::string& rest = "") {
    calls += name;
    for (const int number : numbers) calls += " " + std::to_string(number);
    calls += rest + "; ";
    const auto failure = failures.find(name);
    status_ = failure == failures.end() ? GpibStatus{} : failure->second;
    return failure == failures.end();
  }

  VirtualClock& clock_;
  InstrumentScript& script_;
  GpibStatus status_;
  std::string reply_;
};

// A USB bus with one scripted instrument. After 5 s of nothing but empty polls the driver gives up.
class FakeUsb : public UsbDriver {
 public:
  FakeUsb(VirtualClock& clock, InstrumentScript& script) : clock_(clock), script_(script) {}

  // The instrument has bytes to read from then on.
  void Offer(const std::string& bytes, Milliseconds delay = Milliseconds(0)) {
    offered_ += bytes;
    readyAt_ = clock_.Now() + delay;
  }

  int GetDeviceNum() override { return devices; }
  std::string Problem() override { return {}; }
  bool Write_USB(int, std::uint8_t byte) override {
    if (operationsLeft-- <= 0) return false;
    written += static_cast<char>(byte);
    frame_ += static_cast<char>(byte);
    if (byte != '\r') return true;
    frame_.pop_back();
    const auto exchange = script_.Hear(std::exchange(frame_, ""));
    if (!exchange.reply.empty()) Offer(exchange.reply, exchange.delay);
    return true;
  }
  bool Read_USB(int, int phase, int count, std::span<std::uint8_t> buffer) override {
    if (operationsLeft-- <= 0) return false;
    if (phase != 0) {
      std::copy_n(offered_.begin(), count, buffer.begin());
      offered_.erase(0, static_cast<std::size_t>(count));
      return true;
    }
    const bool ready = !offered_.empty() && clock_.Now() >= readyAt_;
    buffer[0] = ready ? static_cast<std::uint8_t>(std::min<std::size_t>(offered_.size(), 255)) : 0;
    emptyPolls_ = ready ? 0 : emptyPolls_ + 1;
    if (!ready) clock_.Block(kPollTime);
    return emptyPolls_ * kPollTime < Milliseconds(5000);
  }
  bool Control_Command_Send(int device, int request, int value, int index) override {
    transfers.push_back({device, request, value, index});
    return operationsLeft-- > 0;
  }
  bool Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) override {
    transfers.push_back({device, count});
    if (operationsLeft-- <= 0) return false;
    std::copy_n(screen.begin(), std::min(screen.size(), buffer.size()), buffer.begin());
    return true;
  }

  int devices = 1;
  std::string written;                      // every byte, terminators and all
  std::vector<std::vector<int>> transfers;  // the arguments of control and of bulk transfers
  std::string screen;                       // what the bulk read gives
  int operationsLeft = 1'000'000'000;       // how many more succeed

 private:
  static constexpr Milliseconds kPollTime{2};  // of an empty poll

  VirtualClock& clock_;
  InstrumentScript& script_;
  std::string frame_;
  std::string offered_;
  Milliseconds readyAt_{0};
  int emptyPolls_ = 0;
};

}  // namespace oriolemark

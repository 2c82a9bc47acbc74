#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/GpibDriver.h"
#include "support/InstrumentScript.h"
#include "support/VirtualClock.h"

namespace oriolemark {

// A GPIB interface with a scripted instrument. A read with no reply at hand blocks for the ten
// seconds of the device's time-out and fails.
class FakeGpib : public GpibDriver {
 public:
  FakeGpib(VirtualClock& clock, InstrumentScript& script) : clock_(clock), script_(script) {}

  // Every later call of this name leaves these words.
  void Fail(const std::string& call, int ibsta, int iberr) {
    failures_[call] = {.ibsta = ibsta, .iberr = iberr};
  }

  int ibdev(int board, int primary, int secondary, int timeout, int eot, int eos) override {
    constexpr int kHandle = 3;
    return Do("ibdev", {board, primary, secondary, timeout, eot, eos}) ? kHandle : -1;
  }
  void ibclr(int device) override { Do("ibclr", {device}); }
  void ibonl(int device, int online) override { Do("ibonl", {device, online}); }
  void ibwrt(int device, std::string_view bytes) override {
    if (!Do("ibwrt", {device}, " " + std::string(bytes))) return;
    if (const auto exchange = script_.Hear(std::string(bytes))) reply_ = exchange->reply;
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
    const int taken = static_cast<int>(count);
    status_ = {reply_.empty() ? kGpibEnd | 0x100 : 0x100, 0, taken, taken};
  }
  const GpibStatus& Status() const override { return status_; }

  std::vector<std::string> calls;  // such as "ibonl 3 0"; those of writes end in their bytes

 private:
  bool Do(const std::string& name, const std::vector<int>& arguments,
          const std::string& bytes = {}) {
    calls.push_back(name);
    for (const int argument : arguments) calls.back() += " " + std::to_string(argument);
    calls.back() += bytes;
    const auto failure = failures_.find(name);
    status_ = failure == failures_.end() ? GpibStatus{} : failure->second;
    return failure == failures_.end();
  }

  VirtualClock& clock_;
  InstrumentScript& script_;
  std::map<std::string, GpibStatus> failures_;
  GpibStatus status_;
  std::string reply_;
};

}  // namespace oriolemark

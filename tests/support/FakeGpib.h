#pragma once

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
  static constexpr int kHandle = 3;

  FakeGpib(VirtualClock& clock, InstrumentScript& script) : clock_(clock), script_(script) {}

  // Every later call of this name leaves these words, until it is healed.
  void Fail(const std::string& call, int ibsta, int iberr) { failures_[call] = {ibsta, iberr}; }
  void Heal() { failures_.clear(); }

  int ibdev(int board, int primary, int secondary, int timeout, int eot, int eos) override;
  void ibclr(int device) override { Do("ibclr", {device}); }
  void ibwrt(int device, std::string_view bytes) override;
  void ibrd(int device, std::span<char> buffer) override;
  void ibonl(int device, int online) override { Do("ibonl", {device, online}); }
  const GpibStatus& Status() const override { return status_; }

  std::vector<std::string> calls;  // such as "ibonl 3 0"; those of writes end in their bytes

 private:
  bool Do(const std::string& name, const std::vector<int>& arguments, std::string_view bytes = {});

  VirtualClock& clock_;
  InstrumentScript& script_;
  std::map<std::string, GpibStatus> failures_;
  GpibStatus status_;
  std::string reply_;
};

}  // namespace oriolemark

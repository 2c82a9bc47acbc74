#pragma once

#include "platform/GpibDriver.h"

namespace oriolemark {

// Stands in where no GPIB library is installed: every call ends in error, with no error number of
// its own.
class NoGpib : public GpibDriver {
 public:
  int ibdev(int, int, int, int, int, int) override {
    Fail();
    return -1;
  }
  void ibclr(int) override { Fail(); }
  void ibwrt(int, std::string_view) override { Fail(); }
  void ibrd(int, std::span<char>) override { Fail(); }
  void ibonl(int, int) override { Fail(); }
  const GpibStatus& Status() const override { return status_; }

 private:
  void Fail() { status_ = {.ibsta = kGpibErr}; }

  GpibStatus status_;
};

}  // namespace oriolemark

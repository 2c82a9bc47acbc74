#pragma once

#include "drivers/SharedLibrary.h"
#include "platform/GpibDriver.h"
#include "platform/SettingsStore.h"

namespace oriolemark {

// The GPIB calls of a library that is opened at run time. The settings store names the library
// (section "Drivers", key "GpibLibrary"). Otherwise the first usual name that can be opened is
// used. Each connect looks for the library again, unless the requested one is still open. Without a
// library, and before the first successful ibdev, every call fails with 0x8000 and error 0.
class LibraryGpib : public GpibDriver {
 public:
  // The store must outlive the driver.
  explicit LibraryGpib(SettingsStore& store) : store_(store) {}
  ~LibraryGpib() override;
  LibraryGpib(const LibraryGpib&) = delete;
  LibraryGpib& operator=(const LibraryGpib&) = delete;

  int ibdev(int board, int primary, int secondary, int timeout, int eot, int eos) override;
  void ibclr(int device) override;
  // An empty text writes nothing, because the call set does not define such a write.
  void ibwrt(int device, std::string_view bytes) override;
  void ibrd(int device, std::span<char> buffer) override;
  void ibonl(int device, int online) override;
  const GpibStatus& Status() const override { return status_; }

  // Without an open library, names the one that the next connect would use.
  std::string Meaning() override;
  std::string Problem() override;

 private:
  // The status words as the library's threads write them.
  struct BoundWords {
    int ibsta = 0;
    int iberr = 0;
    int ibcnt = 0;
    long ibcntl = 0;
  };

  std::vector<std::string> AskedNames() const;
  bool Load();
  void Bind();
  void Unbind();
  void CopyStatus();
  template <typename Function, typename... Arguments>
  int Call(const char* name, Arguments... arguments);

  SettingsStore& store_;
  SharedLibrary library_;
  std::vector<std::string> names_;  // the names that were tried when it was opened
  BoundWords words_;
  bool bound_ = false;
  bool opened_ = false;  // the last ibdev gave a device
  GpibStatus status_;
};

}  // namespace oriolemark

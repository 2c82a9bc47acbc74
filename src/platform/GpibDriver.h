#pragma once

#include <span>
#include <string>
#include <string_view>

namespace oriolemark {

// Status words of the last GPIB call.
struct GpibStatus {
  int ibsta = 0;  // 16 bits
  int iberr = 0;
  int ibcnt = 0;
  int ibcntl = 0;
};

inline constexpr int kGpibErr = 0x8000;
inline constexpr int kGpibEnd = 0x2000;

// The NI-488.2 calls that the program uses. Each stores its outcome in Status().
class GpibDriver {
 public:
  virtual ~GpibDriver() = default;
  // Returns the device handle.
  virtual int ibdev(int board, int primary, int secondary, int timeout, int eot, int eos) = 0;
  virtual void ibclr(int device) = 0;
  virtual void ibwrt(int device, std::string_view bytes) = 0;
  virtual void ibrd(int device, std::span<char> buffer) = 0;
  virtual void ibonl(int device, int online) = 0;
  virtual const GpibStatus& Status() const = 0;
  // Names the library in use, or what is missing and where the search looked. Plain text for the
  // user, UTF-8.
  virtual std::string Meaning() { return {}; }
  // Cause and cure of the last failure. Plain text for the user, UTF-8; empty if the driver does
  // not know them.
  virtual std::string Problem() { return {}; }
};

}  // namespace oriolemark

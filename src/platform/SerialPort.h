#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace oriolemark {

// A serial line with event codes. Operations that can fail give the system's text of
// the error (UTF-8).
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  virtual bool IsOpen() const = 0;
  virtual void Close() = 0;
  // In the form "9600,n,8,1". What the port refuses shows at Open.
  virtual void SetSettings(const std::string& settings) = 0;
  // 1 is "COM1", 2 is "COM2".
  virtual void SetPort(int number) = 0;
  // The device that a port number leads to, in words for the user: its path; empty where none.
  virtual std::string DeviceOf(int number) const = 0;
  // Opens with no handshaking; bytes that came before are discarded.
  virtual std::optional<std::string> Open() = 0;
  // All bytes have been handed to the system when it returns without an error.
  virtual std::optional<std::string> Write(std::string_view bytes) = 0;
  // Takes the bytes that wait.
  virtual std::string Read() = 0;
  // Looks at the modem lines and at the driver's error counters, and raises their events. Called
  // once a tick; quiet where the device has none.
  virtual void PollLines() = 0;

  // Raised on the application's own thread while events are served. The handler must not wait.
  std::function<void(int code)> onEvent;
};

namespace serial_event {
inline constexpr int kSend = 1;
inline constexpr int kReceive = 2;
inline constexpr int kCts = 3;
inline constexpr int kDsr = 4;
inline constexpr int kCarrier = 5;
inline constexpr int kRing = 6;
inline constexpr int kBreak = 1001;
inline constexpr int kFraming = 1004;
inline constexpr int kOverrun = 1006;
inline constexpr int kBufferOverflow = 1008;
inline constexpr int kParity = 1009;
// Not in any list: the port has gone.
inline constexpr int kVanished = 1099;
}  // namespace serial_event

}  // namespace oriolemark

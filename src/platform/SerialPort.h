#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace oriolemark {

// A serial device that the system lists. UTF-8.
struct ListedPort {
  std::string device;       // its path
  std::string description;  // in the words of the adapter; may be empty
};

// A serial line with event codes. An operation that fails returns the system's error text (UTF-8).
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  virtual bool IsOpen() const = 0;
  virtual void Close() = 0;
  // Has the form "9600,n,8,1". Open reports settings that the port refuses.
  virtual void SetSettings(const std::string& settings) = 0;
  // 1 is "COM1", 2 is "COM2".
  virtual void SetPort(int number) = 0;
  // The devices that the system lists now, in its own order.
  virtual std::vector<ListedPort> ListPorts() const { return {}; }
  // The path (UTF-8) of the device behind a port number. `name` is the device in the settings. If
  // it is empty, number 1 means the first listed device. Returns an empty text if there is none.
  virtual std::string DeviceOf(int number, const std::string& name) const = 0;
  // Opens the port without handshaking and discards bytes that came before.
  virtual std::optional<std::string> Open() = 0;
  // Hands all bytes to the system before it returns without an error.
  virtual std::optional<std::string> Write(std::string_view bytes) = 0;
  // Removes and returns the bytes that have arrived.
  virtual std::string Read() = 0;
  // Checks the modem lines and the driver's error counters, and raises their events. Called once a
  // tick. Does nothing if the device has none.
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
// The port has vanished. This code has no status text of its own.
inline constexpr int kVanished = 1099;
}  // namespace serial_event

}  // namespace oriolemark

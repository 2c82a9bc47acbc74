#pragma once

#include <functional>
#include <string>

#include "link/RS232Func.h"
#include "platform/SerialPort.h"

namespace oriolemark {

// Listens to the serial port's events for as long as it lives. Passes on the bytes that arrive and
// shows the state of the line in the status bar.
class SerialEvents {
 public:
  SerialEvents(SerialPort& port, RS232Func& rs232);
  ~SerialEvents();
  SerialEvents(const SerialEvents&) = delete;
  SerialEvents& operator=(const SerialEvents&) = delete;

  // Shows a text in the status panel for 2 s.
  std::function<void(const std::string& text)> showStatus;

 private:
  void OnComm(int code);

  SerialPort& port_;
  RS232Func& rs232_;
  std::string EventMsg;
  std::string ErrorMsg;
};

}  // namespace oriolemark

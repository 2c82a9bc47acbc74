#pragma once

#include <string>

#include "platform/SerialPort.h"
#include "support/InstrumentScript.h"
#include "support/VirtualClock.h"

namespace oriolemark {

// A serial line with a scripted instrument at its end. What arrives waits until events are served.
class ScriptedSerialPort : public SerialPort {
 public:
  ScriptedSerialPort(VirtualClock& clock, InstrumentScript& script)
      : clock_(clock), script_(script) {}

  // Bytes reach the port so much later, in one chunk.
  void ArriveAfter(Milliseconds delay, const std::string& bytes);
  // Anything else that happens on the line.
  void Raise(int code) {
    if (onEvent) onEvent(code);
  }

  bool IsOpen() const override { return open; }
  void Close() override;
  void SetSettings(const std::string& text) override { settings = text; }
  void SetPort(int portNumber) override { number = portNumber; }
  std::string DeviceOf(int portNumber) const override {
    return "/dev/ttyS" + std::to_string(portNumber - 1);
  }
  std::optional<std::string> Open() override;
  std::optional<std::string> Write(std::string_view bytes) override;
  std::string Read() override;
  void PollLines() override {}

  bool open = false;
  int closes = 0;
  std::string settings;
  int number = 0;
  std::string written;                   // every byte, terminators and all
  std::optional<std::string> openError;  // what Open and Write say, as long as they are set
  std::optional<std::string> writeError;

 private:
  VirtualClock& clock_;
  InstrumentScript& script_;
  std::string arrived_;
};

}  // namespace oriolemark

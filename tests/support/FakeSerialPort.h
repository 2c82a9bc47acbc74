#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/SerialPort.h"
#include "simulator/SerialSide.h"
#include "support/InstrumentScript.h"
#include "support/VirtualClock.h"

namespace oriolemark {

// A serial line on the virtual clock. What arrives waits until events are served.
class FakeSerialPort : public SerialPort {
 public:
  explicit FakeSerialPort(VirtualClock& clock) : clock_(clock) {}

  // Bytes reach the port so much later, in one chunk.
  void ArriveAfter(Milliseconds delay, const std::string& bytes) {
    clock_.After(delay, [this, bytes] {
      arrived_ += bytes;
      Raise(serial_event::kReceive);
    });
  }
  // Anything else that happens on the line.
  void Raise(int code) {
    if (onEvent) onEvent(code);
  }

  bool IsOpen() const override { return open; }
  void Close() override {
    open = false;
    ++closes;
  }
  void SetSettings(const std::string& text) override { settings = text; }
  void SetPort(int portNumber) override { number = portNumber; }
  std::string DeviceOf(int portNumber) const override {
    return "/dev/ttyS" + std::to_string(portNumber - 1);
  }
  std::optional<std::string> Open() override {
    if (!fails.empty()) return fails;
    open = true;
    arrived_.clear();
    return std::nullopt;
  }
  std::optional<std::string> Write(std::string_view bytes) override {
    if (!fails.empty()) return fails;
    if (!open) return "not open";
    written += bytes;
    Hear(std::string(bytes.substr(0, bytes.find('\r'))));
    return std::nullopt;
  }
  std::string Read() override { return std::exchange(arrived_, {}); }
  void PollLines() override {}

  bool open = false;
  int closes = 0;
  std::string settings;
  int number = 0;
  std::string written;  // every byte, terminators and all
  std::string fails;    // what Open and Write say, unless empty

 protected:
  // The far end receives a command.
  virtual void Hear(const std::string& command) = 0;

  VirtualClock& clock_;

 private:
  std::string arrived_;
};

// With a scripted instrument at its end.
class ScriptedSerialPort : public FakeSerialPort {
 public:
  ScriptedSerialPort(VirtualClock& clock, InstrumentScript& script)
      : FakeSerialPort(clock), script_(script) {}

 protected:
  void Hear(const std::string& command) override {
    const auto exchange = script_.Hear(command);
    if (exchange && !exchange->reply.empty()) ArriveAfter(exchange->delay, exchange->reply);
  }

 private:
  InstrumentScript& script_;
};

// With the simulated instrument at its end.
class SimulatedSerialPort : public FakeSerialPort {
 public:
  SimulatedSerialPort(VirtualClock& clock, tx5000::Instrument& instrument)
      : FakeSerialPort(clock), side(instrument), instrument_(instrument) {}

  tx5000::SerialSide side;
  std::map<std::string, std::string> lies;  // what comes instead of a command's reply

 protected:
  void Hear(const std::string& command) override {
    instrument_.Advance(clock_.Now() - lastAdvance_);
    lastAdvance_ = clock_.Now();
    const auto lie = lies.find(command);
    for (const tx5000::Chunk& chunk : side.Receive(command + '\r')) {
      ArriveAfter(chunk.after, lie == lies.end() ? chunk.bytes : lie->second);
    }
  }

 private:
  tx5000::Instrument& instrument_;
  Milliseconds lastAdvance_{0};
};

}  // namespace oriolemark

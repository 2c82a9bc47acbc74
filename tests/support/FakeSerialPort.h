#pragma once

#include <map>
#include <memory>
#include <utility>

#include "platform/SerialPort.h"
#include "simulator/SerialSide.h"
#include "support/VirtualClock.h"

namespace oriolemark {

// A serial line on the virtual clock. What arrives waits until events are served.
class FakeSerialPort : public SerialPort {
 public:
  explicit FakeSerialPort(VirtualClock& clock) : clock_(clock) {}

  // Bytes reach the port so much later, in one chunk.
  void ArriveAfter(Milliseconds delay, const std::string& bytes) {
    clock_.After(delay, [this, bytes, alive = std::weak_ptr<int>(alive_)] {
      if (alive.expired()) return;
      arrived_ += bytes;
      onEvent(serial_event::kReceive);
    });
  }

  bool IsOpen() const override { return open; }
  void Close() override { open = false; }
  void SetSettings(const std::string& text) override { settings = text; }
  void SetPort(int portNumber) override { number = portNumber; }
  std::vector<ListedPort> ListPorts() const override { return ports; }
  std::string DeviceOf(int portNumber, const std::string& name) const override {
    return name.empty() ? "/dev/ttyS" + std::to_string(portNumber - 1) : name;
  }
  std::optional<std::string> Open() override {
    if (!fails.empty()) return fails;
    if (open) return "open already";
    open = true;
    arrived_.clear();
    return std::nullopt;
  }
  std::optional<std::string> Write(std::string_view bytes) override {
    if (!fails.empty()) return fails;
    if (!open) return "not open";
    written += bytes;
    hear(std::string(bytes.substr(0, bytes.find('\r'))));
    return std::nullopt;
  }
  std::string Read() override { return std::exchange(arrived_, {}); }
  void PollLines() override {}

  std::function<void(const std::string& command)> hear;  // the far end's
  bool open = false;
  std::string settings;
  int number = 0;
  std::string written;  // every byte, terminators and all
  std::vector<ListedPort> ports;
  std::string fails;  // what Open and Write say, unless empty

 private:
  VirtualClock& clock_;
  std::string arrived_;
  const std::shared_ptr<int> alive_ = std::make_shared<int>();  // bytes may outlive the port
};

// With the simulated instrument at its end.
struct SimulatedSerialPort : FakeSerialPort {
  SimulatedSerialPort(VirtualClock& clock, tx5000::Instrument& instrument)
      : FakeSerialPort(clock), side(instrument) {
    hear = [this, &clock, &instrument, heardAt = Milliseconds(0)](auto& command) mutable {
      instrument.Advance(clock.Now() - std::exchange(heardAt, clock.Now()));
      const auto lie = lies.find(command);
      for (const tx5000::Chunk& chunk : side.Receive(command + '\r')) {
        ArriveAfter(chunk.after, lie == lies.end() ? chunk.bytes : lie->second);
      }
    };
  }

  tx5000::SerialSide side;
  std::map<std::string, std::string> lies;  // what comes instead of a command's reply
};

}  // namespace oriolemark

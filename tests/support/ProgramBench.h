#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "shell/MainModule.h"
#include "simulator/SerialSide.h"
#include "support/FakeGpib.h"
#include "support/FakeHelp.h"
#include "support/FakeUsb.h"
#include "support/MemoryStore.h"
#include "support/RecordingCanvas.h"
#include "support/RecordingPrompts.h"

namespace oriolemark {

// A serial line with the simulated instrument at its end, on the virtual clock.
class SimulatedSerialPort : public SerialPort {
 public:
  SimulatedSerialPort(VirtualClock& clock, tx5000::Instrument& instrument)
      : clock_(clock), instrument_(instrument), side(instrument) {}

  bool IsOpen() const override { return open_; }
  void Close() override { open_ = false; }
  void SetSettings(const std::string&) override {}
  void SetPort(int) override {}
  std::string DeviceOf(int number) const override {
    return "/dev/ttyS" + std::to_string(number - 1);
  }
  std::optional<std::string> Open() override {
    if (!fails.empty()) return fails;
    open_ = true;
    arrived_.clear();
    return std::nullopt;
  }
  std::optional<std::string> Write(std::string_view bytes) override {
    if (!fails.empty()) return fails;
    written += bytes;
    instrument_.Advance(clock_.Now() - lastAdvance_);
    lastAdvance_ = clock_.Now();
    for (const tx5000::Chunk& chunk : side.Receive(bytes)) {
      const auto lie = lies.find(std::string(bytes.substr(0, bytes.size() - 1)));
      ArriveAfter(chunk.after, lie == lies.end() ? chunk.bytes : lie->second);
    }
    return std::nullopt;
  }
  void ArriveAfter(Milliseconds delay, const std::string& bytes) {
    clock_.After(delay, [this, bytes] {
      arrived_ += bytes;
      if (onEvent) onEvent(serial_event::kReceive);
    });
  }
  std::string Read() override { return std::exchange(arrived_, {}); }
  void PollLines() override {}

  std::string written;
  std::string fails;                        // what Open and Write say, unless empty
  std::map<std::string, std::string> lies;  // what comes instead of a command's reply

 private:
  VirtualClock& clock_;
  tx5000::Instrument& instrument_;
  std::string arrived_;
  Milliseconds lastAdvance_{0};
  bool open_ = false;

 public:
  tx5000::SerialSide side;
};

// The whole program without its toolkit, linked to the simulated instrument over a serial line, in
// front of a scripted user.
struct ProgramBench {
  using MakeCanvas = std::function<std::unique_ptr<Canvas>()>;

  explicit ProgramBench(MakeCanvas canvas = [] { return std::make_unique<RecordingCanvas>(); })
      : makeCanvas(std::move(canvas)) {
    clock.CloseWhenStuck(waiting);
    store.values[{"IO Settings", "ScopeIOType"}] = "2";
    module.onWaveView = [this](frmWave& view) {
      view.NoteInnerSize(PixelsToUnits(700), PixelsToUnits(500));
      wave = &view;
    };
  }

  MakeCanvas makeCanvas;
  VirtualClock clock;
  Waiting waiting{clock};
  RecordingPrompts prompts{clock, waiting};
  MemoryStore store;
  tx5000::Instrument instrument;
  SimulatedSerialPort port{clock, instrument};
  InstrumentScript script;
  FakeGpib gpib{clock, script};
  FakeUsb usb{clock, script};
  FakeHelp help;
  MainModule module{{clock, waiting, prompts, store, port, gpib, usb, [] { return "11/21/26"; },
                     makeCanvas, "0.1.0", help, "/program/Oriolemark.hlp"}};
  frmWave* wave = nullptr;  // the newest view
};

}  // namespace oriolemark

#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "shell/MainModule.h"
#include "support/BlankCanvas.h"
#include "support/FakeGpib.h"
#include "support/FakeSerialPort.h"
#include "support/FakeUsb.h"
#include "support/RecordingPrompts.h"

namespace oriolemark {

// A settings store that forgets everything at the end of the test.
class MemoryStore : public SettingsStore {
 public:
  std::optional<std::string> Read(const std::string& section, const std::string& key) override {
    const auto found = values.find({section, key});
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  void Write(const std::string& section, const std::string& key,
             const std::string& value) override {
    values[{section, key}] = value;
  }
  std::map<std::pair<std::string, std::string>, std::string> values;
};

// A viewer of help files that only notes what it is asked to open.
class FakeHelp : public HelpViewer {
 public:
  std::optional<std::string> Open(const std::string& path, HelpCommand command) override {
    opened.emplace_back(path, command);
    return error;
  }

  std::vector<std::pair<std::string, HelpCommand>> opened;
  std::optional<std::string> error;
};

// The whole program without its toolkit, linked to the simulated instrument over a serial line, in
// front of a scripted user.
struct ProgramBench {
  ProgramBench() {
    clock.CloseWhenStuck(waiting);
    store.values[{"IO Settings", "ScopeIOType"}] = "2";
    module.onWaveView = [this](frmWave& view) {
      view.NoteInnerSize(PixelsToUnits(700), PixelsToUnits(500));
      wave = &view;
    };
  }

  // What the user does at this time from the start.
  void At(int milliseconds, std::function<void()> action) {
    clock.UserAfter(Milliseconds(milliseconds), std::move(action));
  }
  // Runs the program and closes it at this time.
  void RunUntil(int milliseconds) {
    At(milliseconds, [this] { module.main.Close(); });
    module.Main();
  }
  // What the store holds for the next start.
  void Store(const char* section, const char* key, const std::string& value) {
    store.values[{section, key}] = value;
  }

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
                     [] { return std::make_unique<BlankCanvas>(); }, "0.1.0", help,
                     "/program/Oriolemark.hlp"}};
  frmWave* wave = nullptr;  // the newest view
};

}  // namespace oriolemark

#pragma once

#include <unistd.h>

#include "platform/RasterCanvas.h"
#include "shell/MainModule.h"
#include "support/FakeReport.h"
#include "support/FakeSerialPort.h"
#include "support/RecordingPrompts.h"
#include "support/ScriptedInstrument.h"

namespace oriolemark {

// A settings store that forgets everything at the end of the test.
struct MemoryStore : SettingsStore {
  std::optional<std::string> Read(const std::string& section, const std::string& key) override {
    const auto found = values.find({section, key});
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  void Write(const std::string& section, const std::string& key, const std::string& text) override {
    values[{section, key}] = text;
  }
  std::map<std::pair<std::string, std::string>, std::string> values;
};

// A viewer of help files that only notes what it is asked to open.
struct FakeHelp : HelpViewer {
  std::optional<std::string> Open(const std::string& path, HelpCommand command,
                                  const std::string& page) override {
    opened.emplace_back(path + page, command);
    return error;
  }

  std::vector<std::pair<std::string, HelpCommand>> opened;
  std::optional<std::string> error;
};

// Colours by which one sees the operation and the byte: 0xC00 for a colour display, 0xB00 for
// another.
struct FakeColors : ScreenColors {
  void TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override {
    std::transform(raw.begin(), raw.end(), colours.begin(),
                   [](auto byte) { return 0xC00u + byte; });
  }
  void TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override {
    std::transform(raw.begin(), raw.end(), colours.begin(),
                   [](auto byte) { return 0xB00u + byte; });
  }
};

// The whole program without its toolkit, linked to the simulated instrument over a serial line, in
// front of a scripted user.
struct ProgramBench {
  ProgramBench() {
    Store("IO Settings", "ScopeIOType", "2");
    module.onWaveView = [this](frmWave& view) {
      view.NoteInnerSize(PixelsToUnits(400), PixelsToUnits(250));
      wave = &view;
    };
  }

  // What the user does at this time from the start.
  void At(int milliseconds, std::function<void()> action) {
    clock.UserAfter(Milliseconds(milliseconds), std::move(action));
  }
  // Runs the program and closes it at this time.
  void RunUntil(int milliseconds) {
    At(milliseconds, [this] {
      prompts.toSave = MessageAnswer::No;
      module.main.Close();
    });
    module.Main();
  }
  // What the store holds for the next start.
  void Store(const char* section, const char* key, const std::string& value) {
    store.values[{section, key}] = value;
  }

  std::vector<std::string> Told() { return prompts.Told(); }
  // The record holds what the instrument, which stands still, sends of its first channel.
  void ExpectSamples(const WaveRecord& record, const std::string& command) {
    const std::string block = instrument.Execute(command).value_or("");
    ASSERT_EQ(static_cast<std::size_t>(record.Count), block.size() / 5);
    for (int i = 1; i <= record.Count; ++i) {
      const int byte = std::stoi(block.substr(static_cast<std::size_t>(i) * 5 - 3, 2), nullptr, 16);
      ASSERT_EQ(record.CH1Data[i], (record.IsYT ? std::clamp(byte, 26, 225) : byte) - 26) << i;
    }
  }

  VirtualClock clock;
  Waiting& waiting = clock.waiting;
  RecordingPrompts prompts{clock};
  MemoryStore store;
  tx5000::Instrument instrument;
  SimulatedSerialPort port{clock, instrument};
  InstrumentScript script;
  FakeGpib gpib{clock, script};
  FakeUsb usb{clock, script};
  FakeColors colors;
  FakeHelp help;
  const std::string recovered = testing::TempDir() + "Recovered" + std::to_string(getpid());
  const std::string handOver = testing::TempDir() + "$Print" + std::to_string(getpid()) + ".bmp";
  ReportLog reports;
  MainModule module{{clock, waiting, prompts, store, port, gpib, usb, colors,
                     [] { return "11/21/26"; }, [] { return std::make_unique<RasterCanvas>(); },
                     "0.1.0", help, "/program/Oriolemark.hlp", [](std::FILE*) { return true; },
                     handOver, [this] { return reports.Make(); }, recovered,
                     [] { return "2026-11-22 10.00.00"; }}};
  frmWave* wave = nullptr;  // the newest view
};

// The program linked to an instrument that stands still, before its first item.
struct LinkedBench : ProgramBench {
  LinkedBench() {
    instrument.Turn(":STOP", "");
    module.main.Load();
    clock.Run(Milliseconds(10));
    module.main.mnuToolsConnect.Click();
  }
  // Adds items, whose views show them then.
  void Add(ItemKind kind, int items) {
    for (int i = 0; i < items; ++i) module.browser.files.Add(kind);
    clock.Run(Milliseconds(10));
  }

  DataSheet& sheet = module.sheet;
};

}  // namespace oriolemark

#pragma once

#include <filesystem>

#include "cli/Arguments.h"
#include "cli/Runner.h"
#include "support/ProgramBench.h"

namespace oriolemark {

// The command line in front of the simulated instrument, on the virtual clock.
struct CallBench {
  CallBench() {
    store.values[{"IO Settings", "ScopeIOType"}] = "2";
    clock.onStuck = [this] { runner.Interrupt(); };
  }

  // Runs a call of words with blanks between them; "_" is a blank in a word.
  ExitCode Run(const std::string& words) {
    std::vector<std::string> arguments = Split(words, ' ');
    for (std::string& argument : arguments) std::ranges::replace(argument, '_', ' ');
    out.clear();
    err.clear();
    wire.clear();
    const auto read = ReadArguments(arguments, "1.2.3");
    if (const auto* const answer = std::get_if<Answer>(&read)) {
      (answer->code == ExitCode::Success ? out : err) = answer->text;
      return answer->code;
    }
    return Runner(desk).Run(std::get<Call>(read));
  }
  // The same with the runner that can be interrupted.
  ExitCode RunInterruptibly(const std::string& words) {
    return runner.Run(std::get<Call>(ReadArguments(Split(words, ' '), "")));
  }
  // Takes the cable out at this time from now, and puts it in again so much later.
  void UnplugAt(Milliseconds time, Milliseconds length) {
    clock.After(time, [this] { SetPlugged(false); });
    clock.After(time + length, [this] { SetPlugged(true); });
  }

  // The line of the present session. What all of them send is in `wire`.
  struct Line : SimulatedSerialPort {
    explicit Line(CallBench& owner) : SimulatedSerialPort(owner.clock, owner.instrument) {
      owner.line = this;
      lies = owner.lies;
      bench = &owner;
    }
    ~Line() override {
      if (bench->line == this) bench->line = nullptr;
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    std::optional<std::string> Open() override {
      fails = bench->plugged ? "" : "No such device";
      return SimulatedSerialPort::Open();
    }
    std::optional<std::string> Write(std::string_view bytes) override {
      if (fails.empty()) bench->wire += bytes;
      return SimulatedSerialPort::Write(bytes);
    }
    CallBench* bench;
  };
  void SetPlugged(bool now) {
    plugged = now;
    if (!now && line != nullptr) line->fails = "Input/output error";
  }

  VirtualClock clock;
  MemoryStore store;
  tx5000::Instrument instrument;
  InstrumentScript script;
  std::map<std::string, std::string> lies;  // as a line has them
  Line* line = nullptr;
  bool plugged = true;
  bool printable = true;
  std::string out, err, wire;
  Desk desk{.events = clock,
            .settings = store,
            .makeDevices =
                [this](Waiting&, SettingsStore&) {
                  return Devices{
                      std::make_unique<Line>(*this), std::make_unique<FakeGpib>(clock, script),
                      std::make_unique<FakeUsb>(clock, script), std::make_unique<FakeColors>()};
                },
            .today = [] { return "11/21/26"; },
            .now = [this] { return std::to_string(clock.Now().count() / 1000); },
            .makeCanvas = [] { return std::make_unique<RasterCanvas>(); },
            .encodePng =
                [](auto pixels, int width) {
                  return std::optional(std::to_string(pixels.size()) + "/" + std::to_string(width));
                },
            .syncFile = [](std::FILE*) { return true; },
            .fileExists = [](const std::string& path) { return std::filesystem::exists(path); },
            .print =
                [this](std::string_view bytes) {
                  out += bytes;
                  return printable;
                },
            .printError = [this](std::string_view bytes) { err += bytes; },
            .version = "1.2.3"};
  Runner runner{desk};
};

}  // namespace oriolemark

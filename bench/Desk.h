#pragma once

#include <cstdio>
#include <cstdlib>
#include <map>

#include "drivers/ChosenUsb.h"
#include "drivers/LibraryGpib.h"
#include "link/ScopeLink.h"
#include "transfers/RefreshLoop.h"
#include "transfers/WaveReader.h"
#include "waveview/frmWave.h"

namespace oriolemark {

// A benchmark has no user. A message means that the measured work was not done.
class FatalPrompts : public Prompts {
 public:
  MessageAnswer Show(const Message& message) override {
    std::fprintf(stderr, "%s\n", message.text.c_str());
    std::abort();
  }
  std::string AskFileName(const FileQuestion&) override { return {}; }
  void ShowPrinterDialog(const std::string&) override {}
};

// Settings of section and key that are never written.
class FixedStore : public SettingsStore {
 public:
  std::optional<std::string> Read(const std::string& section, const std::string& key) override {
    const auto found = values.find(section + "/" + key);
    return found != values.end() ? std::optional(found->second) : std::nullopt;
  }
  void Write(const std::string&, const std::string&, const std::string&) override {}

  std::map<std::string, std::string> values;
};

// The connected program from the serial line to its wave views, on any event source and line.
struct Desk {
  Desk(EventSource& eventSource, SerialPort& serialPort) : events(eventSource), port(serialPort) {
    settings.ScopeIOType = kLinkRS232;
    state.LinkOpened = state.ScopeConnected = true;
    sheet.WaveCount = 1;
    tick.SetEnabled(true);
  }

  EventSource& events;
  SerialPort& port;
  Waiting waiting{events};
  FatalPrompts prompts;
  FixedStore store;
  LibraryGpib gpibDriver{store};
  ChosenUsb usbDriver{store, MakeUsbTime(waiting, [] { return 0U; })};
  LinkSettings settings;
  ScopeLink link{port, gpibDriver, usbDriver, settings, waiting, prompts};
  LinkState& state = link.state;
  TX5000Cmd& scope = link.scope;
  Timer tick{events, 100, [this] { ++state.SerialTicks; }};
  TransferState transfer;
  DataSheet sheet;
  CtrlSettings controls;
  TransferScratch scratch;
  RefreshFlags flags;
  RefreshSettings refresh{.RefreshType = "Auto", .RefreshInterval = 100};
  ScreenPointer pointer;
  frmPrgress progress{events, waiting, store, state, transfer, scope, pointer};
  WaveReader reader{{waiting, scope, sheet, scratch, progress.Progressing(),
                     [] { return std::string("01/01/26"); }}};
  RefreshContext refreshContext{events, waiting, prompts, state, transfer, flags, refresh};
};

// A line to an instrument that answers at the next turn of the event loop.
class InstantLine : public SerialPort, public EventSource {
 public:
  // The reply to a command, with its LF; empty for none.
  std::function<std::string(std::string_view command)> answer;

  bool IsOpen() const override { return true; }
  void Close() override {}
  void SetSettings(const std::string&) override {}
  void SetPort(int) override {}
  std::string DeviceOf(int, const std::string&) const override { return {}; }
  std::optional<std::string> Open() override { return {}; }
  std::optional<std::string> Write(std::string_view bytes) override {
    reply_ = answer ? answer(bytes.substr(0, bytes.size() - 1)) : std::string();
    sent_ = 0;
    return {};
  }
  // Returns at most as many bytes as a real line does.
  std::string Read() override {
    const std::string chunk = reply_.substr(sent_, 4096);
    sent_ += chunk.size();
    return chunk;
  }
  void PollLines() override {}

  void ServePending(UserInput) override {}
  void ServeNext(Milliseconds, UserInput) override {
    if (sent_ >= reply_.size()) std::abort();  // this wait would never end
    if (onEvent) onEvent(serial_event::kReceive);
  }
  void Block(Milliseconds) override {}
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()>) override {
    struct Mute : Alarm {
      void Start(Milliseconds) override {}
      void Stop() override {}
    };
    return std::make_unique<Mute>();
  }
  void Wake() override {}

 private:
  std::string reply_;
  std::size_t sent_ = 0;
};

}  // namespace oriolemark

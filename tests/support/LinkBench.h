#pragma once

#include "link/ScopeLink.h"
#include "platform/Timer.h"
#include "support/FakeSerialPort.h"
#include "support/RecordingPrompts.h"
#include "support/ScriptedInstrument.h"

namespace oriolemark {

// The whole link on a virtual clock, with one scripted instrument behind all three transports.
struct LinkBench {
  LinkBench() {
    timeOutTimer.SetEnabled(true);
    port.hear = [this](const std::string& command) {
      const auto exchange = script.Hear(command);
      if (!exchange.reply.empty()) port.ArriveAfter(exchange.delay, exchange.reply);
    };
    scope.showIndicator = [this](bool connected) { indicator.push_back(connected); };
  }

  // A link as a passed handshake leaves it, with nothing sent.
  void Connect(int ioType) {
    settings.ScopeIOType = ioType;
    port.open = true;
    state.LinkOpened = state.ScopeConnected = true;
  }

  VirtualClock clock;
  Waiting& waiting = clock.waiting;
  RecordingPrompts prompts{clock};
  InstrumentScript script;
  FakeSerialPort port{clock};
  FakeGpib gpibDriver{clock, script};
  FakeUsb usbDriver{clock, script};
  LinkSettings settings;
  ScopeLink link{port, gpibDriver, usbDriver, settings, waiting, prompts};
  LinkState& state = link.state;
  RS232Func& rs232 = link.rs232;
  GPIBFunc& gpib = link.gpib;
  USB_FUNC& usb = link.usb;
  SerialEvents& serialEvents = link.serialEvents;
  TX5000Cmd& scope = link.scope;
  Timer timeOutTimer{clock, 100, [this] {
                       ++state.SerialTicks;
                       ++state.UsbTicks;
                     }};
  std::vector<bool> indicator;
};

}  // namespace oriolemark

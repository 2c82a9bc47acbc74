#pragma once

#include "link/SerialEvents.h"
#include "link/TX5000Cmd.h"
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
  LinkState state;
  RS232Func rs232{port, settings, state, waiting, prompts};
  GPIBFunc gpib{gpibDriver, settings, state, waiting, prompts};
  USB_FUNC usb{usbDriver, settings, state, waiting, prompts};
  SerialEvents serialEvents{port, rs232};
  TX5000Cmd scope{settings, state, rs232, gpib, usb, waiting, prompts};
  Timer timeOutTimer{clock, 100, [this] {
                       ++state.SerialTicks;
                       ++state.UsbTicks;
                     }};
  std::vector<bool> indicator;
};

}  // namespace oriolemark

#pragma once

#include "link/SerialEvents.h"
#include "link/TX5000Cmd.h"
#include "platform/Timer.h"
#include "support/FakeGpib.h"
#include "support/FakeSerialPort.h"
#include "support/FakeUsb.h"
#include "support/RecordingPrompts.h"

namespace oriolemark {

// The whole link on a virtual clock, with one scripted instrument behind all three transports.
struct LinkBench {
  explicit LinkBench(TieOrder ties = TieOrder::AsCreated) : clock(ties) {
    clock.CloseWhenStuck(waiting);
    timeOutTimer.SetEnabled(true);
    scope.showIndicator = [this](bool connected) { indicator.push_back(connected); };
  }
  LinkBench(const LinkBench&) = delete;
  LinkBench& operator=(const LinkBench&) = delete;

  // A link as a passed handshake leaves it, with nothing sent.
  void Connect(int ioType) {
    settings.ScopeIOType = ioType;
    port.open = true;
    state.LinkOpened = state.ScopeConnected = true;
  }

  VirtualClock clock;
  Waiting waiting{clock};
  RecordingPrompts prompts{clock, waiting};
  InstrumentScript script;
  ScriptedSerialPort port{clock, script};
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

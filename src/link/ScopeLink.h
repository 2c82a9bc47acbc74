#pragma once

#include "link/GPIBFunc.h"
#include "link/LinkState.h"
#include "link/RS232Func.h"
#include "link/SerialEvents.h"
#include "link/TX5000Cmd.h"
#include "link/USB_FUNC.h"

namespace oriolemark {

// The link as a whole: its state, its three transports and the class that chooses between them.
struct ScopeLink {
  ScopeLink(SerialPort& port, GpibDriver& gpibDriver, UsbDriver& usbDriver,
            const LinkSettings& settings, Waiting& waiting, Prompts& prompts)
      : rs232(port, settings, state, waiting, prompts),
        gpib(gpibDriver, settings, state, waiting, prompts),
        usb(usbDriver, settings, state, waiting, prompts),
        serialEvents(port, rs232),
        scope(settings, state, rs232, gpib, usb, waiting, prompts) {}

  LinkState state;
  RS232Func rs232;
  GPIBFunc gpib;
  USB_FUNC usb;
  SerialEvents serialEvents;
  TX5000Cmd scope;
};

}  // namespace oriolemark

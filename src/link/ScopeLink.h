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
      : context{settings, state, waiting, prompts},
        rs232(port, context),
        gpib(gpibDriver, context),
        usb(usbDriver, context),
        serialEvents(port, rs232),
        scope(context, rs232, gpib, usb) {}

  LinkState state;
  const LinkContext context;
  RS232Func rs232;
  GPIBFunc gpib;
  USB_FUNC usb;
  SerialEvents serialEvents;
  TX5000Cmd scope;
};

}  // namespace oriolemark

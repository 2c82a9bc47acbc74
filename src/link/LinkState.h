#pragma once

#include <string>

namespace oriolemark {

// Which transport a link goes over: 1 GPIB, 2 RS232, any other value USB.
inline constexpr int kLinkUsb = 0;
inline constexpr int kLinkGpib = 1;
inline constexpr int kLinkRS232 = 2;

// What the user has chosen of the link.
struct LinkSettings {
  int ScopeIOType = kLinkUsb;
  int COM_Port = 1;
  std::string BaudRate = "9600";
  int GPIB_Addr = 7;
  int UsbDevice = 0;  // not stored: each run starts with the first instrument
};

// The state of the link. Beside the link itself, the main window clears ScopeConnected at its load
// and counts the ticks, and a transfer sets CommBusy and awaits blocks.
struct LinkState {
  bool LinkOpened = false;      // the transport could be opened
  bool ScopeConnected = false;  // the instrument has passed the handshake
  bool CommBusy = false;        // kept up to date; no rule reads it
  std::string ScopeModel;
  std::string ScopeVersion;  // "mm.nn.pp"
  int ScopeVersionNum = 0;   // mm * 10000 + nn * 100 + pp

  bool ReplyPending = false;  // RS232: a reply is awaited
  std::string RxBuffer;       // RS232: what came since the last send, up to the first LF
  int RxLength = 0;           // RS232: length of RxBuffer before the cut at the LF
  int SerialTicks = 0;        // 100 ms since the last data came
  int UsbTicks = 0;           // 100 ms since the read began
};

}  // namespace oriolemark

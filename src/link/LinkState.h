#pragma once

#include <string>

namespace oriolemark {

// The transport of a link: 1 GPIB, 2 RS232, any other value USB.
inline constexpr int kLinkUsb = 0;
inline constexpr int kLinkGpib = 1;
inline constexpr int kLinkRS232 = 2;

// The user's choices for the link.
struct LinkSettings {
  int ScopeIOType = kLinkUsb;
  int COM_Port = 1;
  std::string BaudRate = "9600";
  int GPIB_Addr = 7;
  int UsbDevice = 0;  // not stored: each run starts with the first instrument
};

// The state of the link. The link is not its only writer: the main window clears ScopeConnected
// when it loads and counts the ticks. A transfer sets CommBusy and waits for blocks.
struct LinkState {
  bool LinkOpened = false;      // the transport could be opened
  bool ScopeConnected = false;  // the instrument has passed the handshake
  bool CommBusy = false;        // kept up to date, but no rule reads it
  std::string ScopeModel;
  std::string ScopeVersion;  // "mm.nn.pp"
  int ScopeVersionNum = 0;   // mm * 10000 + nn * 100 + pp

  bool ReplyPending = false;  // RS232: a reply is expected
  std::string RxBuffer;       // RS232: bytes since the last send, up to the first LF
  int RxLength = 0;           // RS232: length of RxBuffer before the cut at the LF
  int SerialTicks = 0;        // ticks of 100 ms since the last data came
  int UsbTicks = 0;           // ticks of 100 ms since the read began
};

}  // namespace oriolemark

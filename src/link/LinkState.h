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

// The state of the link. It has two other writers: the main window counts the ticks and clears
// ScopeConnected and CommBusy when it loads; the transfer window sets and clears CommBusy.
struct LinkState {
  bool LinkOpened = false;      // the transport could be opened
  bool ScopeConnected = false;  // the instrument has passed the handshake
  // Set while a command is under way over RS232. Also set from a transfer's load until the next
  // command over RS232, or the transfer, has ended. No rule reads it.
  bool CommBusy = false;
  std::string ScopeModel;
  std::string ScopeVersion;  // "mm.nn.pp"
  int ScopeVersionNum = 0;   // mm * 10000 + nn * 100 + pp

  int AwaitedReplies = 0;     // queries that wait for their reply, one inside another
  bool Answered = false;      // the last query has got a reply
  bool ReplyPending = false;  // RS232: a reply is expected
  std::string RxBuffer;       // RS232: bytes since the last send, up to the first LF
  // RS232: length of RxBuffer before the cut at the LF. Stale after a send, until the first byte.
  int RxLength = 0;
  int SerialTicks = 0;  // ticks of 100 ms since the last data came
  int UsbTicks = 0;     // ticks of 100 ms since the read began
};

}  // namespace oriolemark

#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "link/GPIBFunc.h"
#include "link/LinkState.h"
#include "link/RS232Func.h"
#include "link/USB_FUNC.h"
#include "platform/Prompts.h"
#include "platform/Waiting.h"

namespace oriolemark {

// Where the messages about old firmware send the user.
inline constexpr const char kMakerWebAddress[] = "www.tavik.example";

// The text without its first character: turns a keyword such as ":OFF" into the form that a reply
// has. An empty text stays empty.
std::string DropFirstChar(std::string_view text);

// The one way to the instrument, over the transport that ScopeIOType names. A transport shows its
// own messages; the caller gets an empty text and goes on. Over RS232 events are served while a
// reply is awaited, so handlers run inside AskScope and ConnectScope, and may make requests of
// their own.
class TX5000Cmd {
 public:
  TX5000Cmd(const LinkSettings& settings, LinkState& state, RS232Func& rs232, GPIBFunc& gpib,
            USB_FUNC& usb, Waiting& waiting, Prompts& prompts);

  // Lights the connection indicator, or puts it out.
  std::function<void(bool connected)> showIndicator;

  // Writes one command. Still leaves while the program is closing.
  void SendToScope(std::string_view command);

  // Writes one command and gives its reply without the line end; empty after a failure. While the
  // program is closing nothing is sent and the reply is empty.
  std::string AskScope(std::string_view command);

  // Opens the transport and makes sure that a known instrument with firmware from 01.01.33 on
  // answers. The outcome is in ScopeConnected.
  void ConnectScope();

  // Releases the instrument. The transport stays open.
  void DisconnectScope();

  // The way that ScopeIOType names at this moment, for replies in pieces.
  Transport& Link();

  // Whether the instrument says that it has a colour display. Asks it, if the link is open.
  bool IsColorScope();

 private:
  std::string AskIdentity();
  bool Identify();
  bool RefuseDevice();
  bool AcceptVersion(const std::string& version);

  const LinkSettings& settings_;
  LinkState& state_;
  RS232Func& rs232_;
  GPIBFunc& gpib_;
  USB_FUNC& usb_;
  Waiting& waiting_;
  Prompts& prompts_;
};

}  // namespace oriolemark

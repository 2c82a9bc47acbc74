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

// The web address in the messages about old firmware.
inline constexpr const char kMakerWebAddress[] = "www.tavik.example";

// Returns the text without its first character. This turns a keyword such as ":OFF" into the form
// that a reply has. An empty text stays empty.
std::string DropFirstChar(std::string_view text);

// The only way to the instrument, over the transport that ScopeIOType selects. A transport shows
// its own error messages; the caller gets an empty text and goes on. Over RS232, events are served
// while a reply is expected. So handlers may run inside AskScope and ConnectScope and make requests
// of their own.
class TX5000Cmd {
 public:
  TX5000Cmd(const LinkContext& context, RS232Func& rs232, GPIBFunc& gpib, USB_FUNC& usb);

  // Turns the connection indicator on or off.
  std::function<void(bool connected)> showIndicator;
  // A query has brought no reply, or a block has too few samples or other text. Over RS232
  // there is no message about that.
  std::function<void()> onIncomplete = [] {};

  // Writes one command, even while the program is closing.
  void SendToScope(std::string_view command);

  // Writes one command and returns its reply without the line end, or an empty text after a
  // failure. While the program is closing, sends nothing and returns an empty text.
  std::string AskScope(std::string_view command);

  // Opens the transport and checks that a known instrument with firmware 01.01.33 or later answers.
  // Stores the outcome in ScopeConnected.
  void ConnectScope();

  // Releases the instrument. The transport stays open.
  void DisconnectScope();

  // The transport that ScopeIOType selects now, for replies that come in pieces.
  Transport& Link();

  // Asks the instrument whether it has a colour display. Returns false without asking if the link
  // is not open.
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

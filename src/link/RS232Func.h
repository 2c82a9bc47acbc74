#pragma once

#include <string>
#include <string_view>

#include "link/Transport.h"
#include "platform/SerialPort.h"

namespace oriolemark {

// Commands and replies over the serial line. A command ends in CR, a reply in LF. While events are
// served, RS232OnReceive gets the bytes that arrive and collects them in RxBuffer.
class RS232Func : public Transport {
 public:
  RS232Func(SerialPort& port, const LinkContext& context);

  // Opens the port, after closing it if it was open. A failure shows the system's text and clears
  // LinkOpened.
  void RS232Init();

  // Empties RxBuffer, writes the command and blocks for the time that its characters need on the
  // line. A failed write shows the system's text and returns at once.
  void RS232Send(std::string_view command);

  // Serves events until the reply's LF arrives, then returns the reply. The caller has set
  // ReplyPending. Returns an empty text after 2 s of silence (ReplyPending then stays set), or if
  // the program is closing. A request made meanwhile empties the same buffer, so this call may
  // return the reply to that request.
  std::string RS232Read();

  // Stores bytes that have arrived. Never waits.
  void RS232OnReceive(std::string_view chunk);

  void Open() override { RS232Init(); }
  void Send(std::string_view command) override { RS232Send(command); }
  std::string ReadReply() override;
  // Reads up to the LF. Empty after 2 s of silence, or if the program is closing.
  std::string ReadBlock(const Progress& progress) override;

 private:
  Milliseconds TimeOnLine(std::size_t characters) const;

  SerialPort& port_;
};

}  // namespace oriolemark

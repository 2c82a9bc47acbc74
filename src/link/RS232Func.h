#pragma once

#include <string>
#include <string_view>

#include "link/LinkState.h"
#include "link/Transport.h"
#include "platform/Prompts.h"
#include "platform/SerialPort.h"
#include "platform/Waiting.h"

namespace oriolemark {

// Commands and replies over the serial line. A command ends in CR, a reply in LF. What arrives is
// handed to RS232OnReceive while events are served and collects in RxBuffer.
class RS232Func : public Transport {
 public:
  RS232Func(SerialPort& port, const LinkSettings& settings, LinkState& state, Waiting& waiting,
            Prompts& prompts);

  // Opens the port anew. A failure shows the system's text and clears LinkOpened.
  void RS232Init();

  // Empties RxBuffer, writes the command and blocks for the time that its characters need on the
  // line. A failed write shows the system's text and returns at once.
  void RS232Send(std::string_view command);

  // Waits for the LF of the reply, serving events; the caller has set ReplyPending. Empty after 2 s
  // of silence (ReplyPending then stays set) and when the program is closing. A request made
  // meanwhile empties the same buffer, so its reply may come back here.
  std::string RS232Read();

  // Stores a chunk that has arrived. Never waits.
  void RS232OnReceive(std::string_view chunk);

  void Open() override { RS232Init(); }
  void Send(std::string_view command) override { RS232Send(command); }
  std::string ReadReply() override;
  // Up to the LF; empty after 2 s of silence.
  std::string ReadBlock(const Progress& progress) override;

 private:
  Milliseconds TimeOnLine(std::size_t characters) const;

  SerialPort& port_;
  const LinkSettings& settings_;
  LinkState& state_;
  Waiting& waiting_;
  Prompts& prompts_;
};

}  // namespace oriolemark

#pragma once

#include <string>
#include <string_view>

#include "link/Transport.h"
#include "platform/GpibDriver.h"

namespace oriolemark {

// Commands and replies over IEEE 488. Each call to the driver may block for up to 10 s and serves
// no events. A failure shows its message and takes the device offline. Every later call then fails
// too and shows its own message, until the next GPIBInit.
class GPIBFunc : public Transport {
 public:
  GPIBFunc(GpibDriver& driver, const LinkContext& context);

  // Opens and clears the device. A failure clears LinkOpened.
  void GPIBInit();

  // Writes the command without a terminator, then blocks for 5 ms a character, also after a
  // failure. An empty command does nothing.
  void GPIBSend(std::string_view command);

  // Reads one reply of at most 1024 bytes and returns the part before its LF. Returns an empty text
  // if there is no LF, or if the program is closing.
  std::string GPIBRead();

  // Shows the message with the status words and takes the device offline.
  void GPIBError(const std::string& message, int device);

  void Open() override { GPIBInit(); }
  void Send(std::string_view command) override { GPIBSend(command); }
  std::string ReadReply() override { return GPIBRead(); }
  // Ends with the read that reports END, or with a failure.
  std::string ReadBlock(const Progress& progress) override;

 private:
  bool Failed() const { return (driver_.Status().ibsta & kGpibErr) != 0; }
  bool Ended() const { return (driver_.Status().ibsta & kGpibEnd) != 0; }
  std::string StatusText() const;

  GpibDriver& driver_;
  // A write has failed while the program was closing. Nothing more is sent, so that an instrument
  // that has gone costs no second time-out.
  bool failedAtClose_ = false;
  int device_ = -1;  // none opened yet; 0 would be the board itself
};

}  // namespace oriolemark

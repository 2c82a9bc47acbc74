#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "link/Transport.h"
#include "platform/UsbDriver.h"

namespace oriolemark {

// Commands and replies over USB. A command is sent byte by byte and ends in CR. A reply comes in
// counted blocks of at most 255 bytes. Every failure shows a message and gives an empty text,
// except in the screen read, which fails silently.
class USB_FUNC : public Transport {
 public:
  USB_FUNC(UsbDriver& driver, const LinkContext& context);

  // Checks that the interface answers. A failure shows its message and clears LinkOpened.
  void USBInit();

  // Sends the command up to the first byte that fails.
  void USBSend(std::string_view command);

  // Reads one block and returns it up to its first LF. Serves no events: it ends when the
  // instrument has data or the driver gives up. The rest of a longer reply is left for the next
  // read.
  std::string USBRead();

  // Reads one whole block, LF included. Serves events while it waits, for at most 5 s. Returns an
  // empty text if the program is closing.
  std::string USBReadBlock();

  void Open() override { USBInit(); }
  void Send(std::string_view command) override { USBSend(command); }
  std::string ReadReply() override { return USBRead(); }
  // Ends with the block that holds the LF, or with an empty one.
  std::string ReadBlock(const Progress& progress) override;

  // Reads `count` bytes of the screen memory from `offset` on into the same places of the buffer.
  // If a request fails, returns false and the buffer keeps its contents.
  bool USBReadScreen(int offset, std::span<std::uint8_t> buffer, int count);

 private:
  enum class Polling { Blocking, ServingEvents };

  std::string ReadCounted(Polling polling);
  void ShowNoDevice(const char* title);
  bool SendControl(int request, int number);

  UsbDriver& driver_;
  // A write has failed while the program was closing. Nothing more is sent, so that an instrument
  // that has gone costs no second time-out.
  bool failedAtClose_ = false;
};

}  // namespace oriolemark

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "link/LinkState.h"
#include "link/Transport.h"
#include "platform/Prompts.h"
#include "platform/UsbDriver.h"
#include "platform/Waiting.h"

namespace oriolemark {

// Commands and replies over USB: a command goes out a byte at a time and ends in CR, a reply comes
// in counted blocks of at most 255 bytes. Every failure shows a message and gives an empty text;
// the screen read alone fails silently.
class USB_FUNC : public Transport {
 public:
  USB_FUNC(UsbDriver& driver, const LinkSettings& settings, LinkState& state, Waiting& waiting,
           Prompts& prompts);

  // First contact. A failure clears LinkOpened.
  void USBInit();

  // Stops at the first byte that fails.
  void USBSend(std::string_view command);

  // One block, up to its first LF. Serves no events: it ends when the instrument has data or the
  // driver gives up. What a longer reply holds beyond the block is left for the next read.
  std::string USBRead();

  // One block whole, LF included. Serves events while it waits. Empty when the program is closing.
  std::string USBReadBlock();

  void Open() override { USBInit(); }
  void Send(std::string_view command) override { USBSend(command); }
  std::string ReadReply() override { return USBRead(); }
  // Ends with the block that holds the LF, or with an empty one.
  std::string ReadBlock(const Progress& progress) override;

  // Reads `count` bytes of the screen memory from `offset` on to the same places of the buffer,
  // which keeps what it held where a request fails.
  void USBReadScreen(int offset, std::span<std::uint8_t> buffer, int count);

 private:
  enum class Polling { Blocking, ServingEvents };

  std::string ReadCounted(Polling polling);
  void ShowNoDevice(const char* title);
  bool SendControl(int request, int number);

  UsbDriver& driver_;
  const LinkSettings& settings_;
  LinkState& state_;
  Waiting& waiting_;
  Prompts& prompts_;
  // A program that is closing spends no second time-out on an instrument that has gone.
  bool failedAtClose_ = false;
};

}  // namespace oriolemark

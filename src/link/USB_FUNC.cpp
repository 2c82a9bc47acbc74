#include "link/USB_FUNC.h"

#include <algorithm>
#include <array>

#include "link/CauseAndCure.h"

namespace oriolemark {
namespace {

// A block is given up after this many ticks of 100 ms. Ticks pass only while events are served.
constexpr int kBlockTicks = 50;
constexpr Milliseconds kPollPause{2};
constexpr const char* kReadTitle = "USB Read Message";

// The instrument's request numbers and addresses for the screen read.
constexpr int kSelectMemory = 8;
constexpr int kSetCount = 9;
constexpr int kSetAddress = 7;
constexpr int kScreenMemory = 0x500000;
constexpr int kScreenAddress = 0x90000;

}  // namespace

USB_FUNC::USB_FUNC(UsbDriver& driver, const LinkContext& context)
    : Transport({.firstSample = 0, .marksBusy = false, .progressByTimer = false}, context),
      driver_(driver) {}

void USB_FUNC::USBInit() {
  std::array<std::uint8_t, 257> buffer{};
  if (driver_.Read_USB(settings_.UsbDevice, kUsbCountPhase, 1, buffer)) return;
  ShowNoDevice("USB Init");
  state_.LinkOpened = false;
}

void USB_FUNC::USBSend(std::string_view command) {
  if (failedAtClose_) return;
  const std::string frame = std::string(command) + '\r';
  const bool written = std::all_of(frame.begin(), frame.end(), [this](char c) {
    return driver_.Write_USB(settings_.UsbDevice, static_cast<std::uint8_t>(c));
  });
  failedAtClose_ = !written && waiting_.Closing();
  if (written) return;
  ShowNoDevice("USB Send Message");
}

std::string USB_FUNC::USBRead() {
  const std::string block = ReadCounted(Polling::Blocking);
  return block.substr(0, block.find('\n'));
}

std::string USB_FUNC::USBReadBlock() {
  return ReadCounted(Polling::ServingEvents);
}

std::string USB_FUNC::ReadBlock(const Progress& progress) {
  std::string text;
  std::size_t lineEnd = std::string::npos;
  while (lineEnd == std::string::npos && !waiting_.Closing() && text.size() < kLongestBlock) {
    const std::string chunk = USBReadBlock();
    if (chunk.empty()) break;
    lineEnd = chunk.find('\n');
    text += chunk.substr(0, lineEnd);
    progress(text.size());
  }
  return text;
}

std::string USB_FUNC::ReadCounted(Polling polling) {
  std::array<std::uint8_t, 257> buffer{};
  std::uint8_t& waitingBytes = buffer[0];
  state_.UsbTicks = 0;
  while (waitingBytes == 0 && state_.UsbTicks < kBlockTicks) {
    if (waiting_.Closing()) return "";
    if (!driver_.Read_USB(settings_.UsbDevice, kUsbCountPhase, 1, buffer)) {
      ShowNoDevice(kReadTitle);
      return "";
    }
    if (polling == Polling::Blocking) continue;
    if (waitingBytes != 0) {
      waiting_.DoEvents();
    } else {
      waiting_.WaitEvents(kPollPause);
    }
  }
  if (waiting_.Closing()) return "";
  if (state_.UsbTicks >= kBlockTicks) {
    prompts_.Show(
        {.text = "Read USB time out", .title = kReadTitle, .icon = MessageIcon::Exclamation});
    return "";
  }
  const int count = waitingBytes;
  if (!driver_.Read_USB(settings_.UsbDevice, kUsbFetchPhase, count, buffer)) {
    ShowNoDevice(kReadTitle);
    return "";
  }
  return {buffer.begin(), buffer.begin() + count};
}

void USB_FUNC::ShowNoDevice(const char* title) {
  prompts_.Show({.text = "Can't Connect to USB Device",
                 .systemText = CauseAndCure(driver_.Problem()),
                 .title = title,
                 .icon = MessageIcon::Exclamation});
}

bool USB_FUNC::SendControl(int request, int number) {
  return driver_.Control_Command_Send(settings_.UsbDevice, request, number & 0xFFFF,
                                      (number >> 16) & 0xFFFF);
}

bool USB_FUNC::USBReadScreen(int offset, std::span<std::uint8_t> buffer, int count) {
  const bool fits =
      offset >= 0 && count >= 0 &&
      static_cast<std::size_t>(offset) + static_cast<std::size_t>(count) <= buffer.size();
  if (!fits) return false;
  if (!SendControl(kSelectMemory, kScreenMemory)) return false;
  if (!SendControl(kSetCount, count)) return false;
  if (!SendControl(kSetAddress, offset + kScreenAddress)) return false;
  return driver_.Bulk_DataTransfer_Read(settings_.UsbDevice, count,
                                        buffer.subspan(static_cast<std::size_t>(offset)));
}

}  // namespace oriolemark

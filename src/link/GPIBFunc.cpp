#include "link/GPIBFunc.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "link/CauseAndCure.h"

namespace oriolemark {
namespace {

constexpr int kBoard = 0;
constexpr int kNoSecondaryAddress = 0;
constexpr int kTenSeconds = 13;
constexpr int kEndWithLastByte = 1;
constexpr int kNoEndOfString = 0;
constexpr Milliseconds kTimePerCharacter{5};
constexpr std::size_t kReplySize = 1024;
constexpr std::size_t kPieceSize = 200;

constexpr std::array<const char*, 21> kMnemonics{
    "EDVR", "ECIC", "ENOL", "EADR", "EARG", "ESAC", "EABO", "ENEB", "EDMA", "",    "EOIP",
    "ECAP", "EFSO", "",     "EBUS", "ESTB", "ESRQ", "",     "",     "",     "ETAB"};

std::string Mnemonic(int code) {
  return code >= 0 && code < static_cast<int>(kMnemonics.size())
             ? kMnemonics[static_cast<std::size_t>(code)]
             : "";
}

std::string Digits(int value, int base) {
  char text[16];
  std::string digits(text, std::to_chars(text, text + sizeof text, value, base).ptr);
  for (char& c : digits) {
    if (c >= 'a') c = static_cast<char>(c - 'a' + 'A');
  }
  return digits;
}

}  // namespace

GPIBFunc::GPIBFunc(GpibDriver& driver, const LinkContext& context)
    : Transport({.firstSample = 0, .marksBusy = false, .progressByTimer = false}, context),
      driver_(driver) {}

void GPIBFunc::GPIBInit() {
  device_ = driver_.ibdev(kBoard, settings_.GPIB_Addr, kNoSecondaryAddress, kTenSeconds,
                          kEndWithLastByte, kNoEndOfString);
  if (Failed()) {
    state_.LinkOpened = false;
    prompts_.Show({.text = "Unable to open GPIB IO device\r" + StatusText(),
                   .systemText = CauseAndCure(driver_.Problem()),
                   .title = "GPIB Init",
                   .icon = MessageIcon::Critical});
    return;
  }
  driver_.ibclr(device_);
  if (Failed()) {
    state_.LinkOpened = false;
    GPIBError("Unable to clear device", device_);
  }
}

void GPIBFunc::GPIBSend(std::string_view command) {
  // The calls do not define a write of no bytes.
  if (command.empty()) return;
  if (failedAtClose_) return;
  const auto length = static_cast<int>(command.size());
  driver_.ibwrt(device_, command);
  failedAtClose_ = Failed() && waiting_.Closing();
  if (Failed()) GPIBError("Unable to write to device", device_);
  waiting_.Sleep(kTimePerCharacter * length);
}

std::string GPIBFunc::GPIBRead() {
  // A read can block for the device's ten seconds. That is too long for a program that is closing.
  if (waiting_.Closing()) return "";
  std::array<char, kReplySize> buffer{};
  driver_.ibrd(device_, buffer);
  if (Failed()) GPIBError("Unable to read from device", device_);
  const auto lineEnd = std::find(buffer.begin(), buffer.end(), '\n');
  return lineEnd != buffer.end() ? std::string(buffer.begin(), lineEnd) : "";
}

void GPIBFunc::GPIBError(const std::string& message, int device) {
  const std::string text =
      message + "\r" + StatusText() + " <" + Mnemonic(driver_.Status().iberr) + ">";
  prompts_.Show({.text = text,
                 .systemText = CauseAndCure(driver_.Problem()),
                 .title = "Error",
                 .icon = MessageIcon::Critical});
  driver_.ibonl(device, 0);
}

std::string GPIBFunc::ReadBlock(const Progress& progress) {
  // Each read before END adds all 200 bytes, even those an earlier read left there. On purpose.
  std::array<char, kPieceSize> buffer{};
  const std::string_view held(buffer.data(), buffer.size());
  std::string text;
  bool ended = false;
  while (!ended && !waiting_.Closing() && text.size() < kLongestBlock) {
    driver_.ibrd(device_, buffer);
    if (Failed()) {
      GPIBError("Unable to read from device", device_);
      break;
    }
    // Checked before events are served, because a request made there changes the status.
    ended = Ended();
    const std::size_t lineEnd = held.find('\n');
    if (!ended) {
      text += held;
    } else if (lineEnd != std::string_view::npos) {
      text += held.substr(0, lineEnd);
    }
    progress(text.size());
  }
  return text;
}

std::string GPIBFunc::StatusText() const {
  const GpibStatus& status = driver_.Status();
  return "ibsta = &H" + Digits(status.ibsta & 0xFFFF, 16) + "\riberr = " + Digits(status.iberr, 10);
}

}  // namespace oriolemark

#include "link/TX5000Cmd.h"

#include <algorithm>
#include <array>
#include <optional>

#include "link/StringRES.h"
#include "platform/Rounding.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

constexpr int kHandshakeTries = 3;
constexpr Milliseconds kBetweenTries{50};
constexpr int kOldestVersion = 10133;
constexpr const char* kFamily = "TX-5";
constexpr std::array<const char*, 2> kMakers{"TAVIK TECHNOLOGIES", "TAVIK ELECTRONIC"};

bool IsExpected(const std::string& identity) {
  return std::any_of(kMakers.begin(), kMakers.end(), [&identity](const char* maker) {
    return identity.starts_with(std::string(maker) + "," + kFamily);
  });
}

// Returns nothing if there is no comma.
std::optional<std::string> FirstField(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos) return std::nullopt;
  return text.substr(0, comma);
}

// The text behind the first comma, or the whole text if there is none.
std::string AfterFirstField(const std::string& text) {
  const std::size_t comma = text.find(',');
  return comma == std::string::npos ? text : text.substr(comma + 1);
}

int LeadingPair(const std::string& version) {
  return RoundToInt(NumberInReply(version.substr(0, 2)).value_or(0));
}

// Turns "mm.nn.pp" into mm * 10000 + nn * 100 + pp. A part that is not a number counts as 0. A text
// too short to be cut is read again as the next part.
int VersionNumber(std::string version) {
  constexpr std::array<int, 3> kWeights{10000, 100, 1};
  int number = 0;
  for (const int weight : kWeights) {
    number += LeadingPair(version) * weight;
    if (version.size() >= 3) version.erase(0, 3);
  }
  return number;
}

}  // namespace

std::string DropFirstChar(std::string_view text) {
  return std::string(text.empty() ? text : text.substr(1));
}

TX5000Cmd::TX5000Cmd(const LinkContext& context, RS232Func& rs232, GPIBFunc& gpib, USB_FUNC& usb)
    : settings_(context.settings),
      state_(context.state),
      rs232_(rs232),
      gpib_(gpib),
      usb_(usb),
      waiting_(context.waiting),
      prompts_(context.prompts) {}

Transport& TX5000Cmd::Link() {
  switch (settings_.ScopeIOType) {
    case kLinkGpib:
      return gpib_;
    case kLinkRS232:
      return rs232_;
    default:
      return usb_;
  }
}

void TX5000Cmd::SendToScope(std::string_view command) {
  Transport& link = Link();
  if (link.traits.marksBusy) state_.CommBusy = true;
  link.Send(command);
  if (link.traits.marksBusy) state_.CommBusy = false;
}

std::string TX5000Cmd::AskScope(std::string_view command) {
  if (waiting_.Closing()) return "";
  Transport& link = Link();
  if (link.traits.marksBusy) state_.CommBusy = true;
  link.Send(command);
  ++state_.AwaitedReplies;
  const std::string reply = link.ReadReply();
  --state_.AwaitedReplies;
  state_.Answered = !reply.empty();
  if (link.traits.marksBusy) state_.CommBusy = false;
  if (reply.empty()) onIncomplete();
  return reply;
}

void TX5000Cmd::ConnectScope() {
  state_.LinkOpened = true;
  Link().Open();
  const bool passed = state_.LinkOpened && Identify();
  if (showIndicator) showIndicator(passed);
  state_.ScopeConnected = passed;
}

void TX5000Cmd::DisconnectScope() {
  // Connecting and disconnecting send the same command on purpose.
  if (state_.ScopeConnected) SendToScope(std::string(kKey) + kLock + kEnable);
  if (showIndicator) showIndicator(false);
  state_.ScopeConnected = false;
}

std::string TX5000Cmd::AskIdentity() {
  std::string reply;
  for (int attempt = 0; attempt < kHandshakeTries; ++attempt) {
    reply = AskScope(kIdentify);
    if (IsExpected(reply)) break;
    waiting_.Sleep(kBetweenTries);
  }
  return reply;
}

bool TX5000Cmd::Identify() {
  SendToScope(std::string(kDisplay) + kMenuStatus + kOff);
  SendToScope(std::string(kKey) + kLock + kEnable);
  std::string rest = AskIdentity();
  const auto maker = FirstField(rest);
  if (!maker || std::find(kMakers.begin(), kMakers.end(), *maker) == kMakers.end()) {
    return RefuseDevice();
  }
  rest = AfterFirstField(rest);
  // If the reply has no model field, the model stays as it was and is checked all the same.
  if (const auto model = FirstField(rest)) state_.ScopeModel = *model;
  if (!state_.ScopeModel.starts_with(kFamily)) return RefuseDevice();
  rest = AfterFirstField(rest);
  return AcceptVersion(AfterFirstField(rest));
}

bool TX5000Cmd::RefuseDevice() {
  prompts_.Show({.text = "Device not found",
                 .title = "Connect to Oscilloscope",
                 .icon = MessageIcon::Exclamation});
  return false;
}

bool TX5000Cmd::AcceptVersion(const std::string& version) {
  state_.ScopeVersion = version;
  state_.ScopeVersionNum = VersionNumber(version);
  // Version 01.01.33 passes, although the message asks for a higher one.
  if (state_.ScopeVersionNum >= kOldestVersion) return true;
  prompts_.Show(
      {.text = "The version of the DSO must be higher than 01.01.33\rCurrent Version is " +
               state_.ScopeVersion + "\rPlease contact TAVIK at " + kMakerWebAddress,
       .icon = MessageIcon::Exclamation});
  return false;
}

bool TX5000Cmd::IsColorScope() {
  if (!state_.LinkOpened) return false;
  const std::string rest = AfterFirstField(AskScope(kIdentify));
  constexpr std::size_t kColourMark = 7;  // index of the "C" in "TX-5000CA"
  return rest.size() > kColourMark && rest[kColourMark] == 'C';
}

}  // namespace oriolemark

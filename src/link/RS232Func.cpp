#include "link/RS232Func.h"

#include <algorithm>

#include "platform/Rounding.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

// A reply is given up after this many ticks of 100 ms without data.
constexpr int kSilentTicks = 20;
constexpr double kShortestCharacter = 3.0;  // ms
constexpr double kLongestSleep = 10000.0;   // ms
constexpr std::size_t kLongestReply = std::size_t{64} << 20;

std::string TrimBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

RS232Func::RS232Func(SerialPort& port, const LinkContext& context)
    : Transport({.firstSample = 1, .marksBusy = true, .progressByTimer = true}, context),
      port_(port) {}

void RS232Func::RS232Init() {
  if (port_.IsOpen()) port_.Close();
  port_.SetSettings(TrimBlanks(settings_.BaudRate) + ",n,8,1");
  port_.SetPort(settings_.COM_Port);
  if (const auto error = port_.Open()) {
    prompts_.Show({.systemText = *error, .title = "RS232 Init", .icon = MessageIcon::Exclamation});
    state_.LinkOpened = false;
  }
}

void RS232Func::RS232Send(std::string_view command) {
  const std::string frame = std::string(command) + '\r';
  state_.RxBuffer.clear();
  if (const auto error = port_.Write(frame)) {
    prompts_.Show(
        {.systemText = *error, .title = "RS232 Send Message", .icon = MessageIcon::Exclamation});
    return;
  }
  waiting_.Sleep(TimeOnLine(frame.size()));
}

Milliseconds RS232Func::TimeOnLine(std::size_t characters) const {
  // A rate that is not a positive number counts as a fast line.
  const double baud = NumberInReply(settings_.BaudRate).value_or(0);
  const double character =
      baud > 0 ? std::max(kShortestCharacter, 30000.0 / baud) : kShortestCharacter;
  const double time = character * static_cast<double>(characters);
  return Milliseconds(RoundToInt(std::min(time, kLongestSleep)));
}

std::string RS232Func::RS232Read() {
  state_.SerialTicks = 0;
  int ticks = 0;
  const bool served = waiting_.WaitUntil([this, &ticks] {
    ticks = state_.SerialTicks;
    return !state_.ReplyPending || ticks >= kSilentTicks;
  });
  // Silence wins over a clear flag. A nested request may have taken our reply and cleared the flag;
  // 2 s without data then mean that ours is lost.
  if (!served || ticks >= kSilentTicks) return "";
  return state_.RxBuffer;
}

std::string RS232Func::ReadReply() {
  state_.ReplyPending = true;
  return RS232Read();
}

std::string RS232Func::ReadBlock(const Progress& progress) {
  state_.ReplyPending = true;
  state_.SerialTicks = 0;
  const bool served = waiting_.WaitUntil([&] {
    progress(static_cast<std::size_t>(std::max(state_.RxLength, 0)));
    return !state_.ReplyPending || state_.SerialTicks >= kSilentTicks;
  });
  if (!served || state_.SerialTicks >= kSilentTicks) return "";
  return state_.RxBuffer;
}

void RS232Func::RS232OnReceive(std::string_view chunk) {
  std::string& buffer = state_.RxBuffer;
  const std::size_t before = buffer.size();
  buffer.append(chunk.substr(0, kLongestReply - std::min(before, kLongestReply)));
  state_.RxLength = static_cast<int>(buffer.size());
  state_.SerialTicks = 0;
  // The buffer holds no LF before this chunk, because it was cut in front of the first one.
  const std::size_t lineEnd = chunk.find('\n');
  if (lineEnd == std::string_view::npos) return;
  state_.ReplyPending = false;
  buffer.resize(std::min(buffer.size(), before + lineEnd));
}

}  // namespace oriolemark

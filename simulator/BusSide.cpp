#include "simulator/BusSide.h"

#include <algorithm>

namespace tx5000 {
namespace {

constexpr std::size_t kLongestCommand = 256;
// A program that asks and never fetches must not make the queue grow for ever.
constexpr std::size_t kMostQueued = 4 << 20;

}  // namespace

void BusSide::Receive(std::string_view bytes, bool end) {
  for (const char byte : bytes) {
    if (framing_ == Framing::kReturn && byte == '\r') {
      CarryOut();
    } else if (command_.size() < kLongestCommand) {
      command_ += byte;
    }
  }
  if (framing_ == Framing::kEnd && end) CarryOut();
}

void BusSide::CarryOut() {
  const std::string command = std::move(command_);
  command_.clear();
  const auto text = instrument_.Execute(command);
  if (!text) return;
  Reply reply{*text + "\n"};
  faults_.Apply(command, reply);
  vanished_ = vanished_ || reply.portVanishes;
  if (queuedBytes_ + reply.bytes.size() <= kMostQueued) Queue(reply);
}

// Queues a reply. A doubled reply is two lines, each with its own END. A reply without a line end
// has END with its last byte, unless the connection dies before that byte.
void BusSide::Queue(const Reply& reply) {
  auto due = instrument_.Now();
  if (!lines_.empty()) due = std::max(due, lines_.back().due);
  due += reply.delay;
  std::string_view rest = reply.bytes;
  while (!rest.empty()) {
    const auto length = std::min(rest.find('\n'), rest.size() - 1) + 1;
    const bool end = rest[length - 1] == '\n' || !reply.nothingMore;
    lines_.push_back({due, std::string(rest.substr(0, length)), end});
    queuedBytes_ += length;
    rest.remove_prefix(length);
  }
}

void BusSide::Clear() {
  command_.clear();
  lines_.clear();
  queuedBytes_ = 0;
}

std::size_t BusSide::Waiting() const {
  std::size_t count = 0;
  for (const Line& line : lines_) {
    if (!IsThere(line)) break;
    count += line.bytes.size();
  }
  return count;
}

BusSide::Piece BusSide::FetchUpToEnd(std::size_t count) {
  Piece piece;
  while (piece.bytes.size() < count && !piece.end && !lines_.empty() && IsThere(lines_.front())) {
    Line& line = lines_.front();
    const auto taken = std::min(count - piece.bytes.size(), line.bytes.size());
    piece.bytes.append(line.bytes, 0, taken);
    line.bytes.erase(0, taken);
    queuedBytes_ -= taken;
    if (!line.bytes.empty()) break;
    piece.end = line.end;
    lines_.pop_front();
  }
  return piece;
}

std::optional<std::string> BusSide::Fetch(std::size_t count) {
  if (Waiting() < count) return std::nullopt;
  std::string bytes;
  while (bytes.size() < count) bytes += FetchUpToEnd(count - bytes.size()).bytes;
  return bytes;
}

std::optional<std::chrono::milliseconds> BusSide::NextArrival() const {
  const auto late =
      std::find_if(lines_.begin(), lines_.end(), [&](const Line& l) { return !IsThere(l); });
  return late == lines_.end() ? std::nullopt : std::optional(late->due);
}

}  // namespace tx5000

#include "simulator/SerialSide.h"

#include <algorithm>
#include <cmath>

namespace tx5000 {
namespace {

constexpr std::size_t kLongestLine = 256;
constexpr double kPieceMilliseconds = 20;  // approximate length of the pieces of a paced reply
constexpr double kBitsPerByte = 10;

}  // namespace

std::vector<Chunk> SerialSide::Receive(std::string_view bytes) {
  std::vector<Chunk> chunks;
  for (const char byte : bytes) {
    if (vanished_) break;
    if (byte == '\r') {
      CarryOut(chunks);
    } else if (line_.size() < kLongestLine) {
      line_ += byte;
    }
  }
  return chunks;
}

void SerialSide::CarryOut(std::vector<Chunk>& chunks) {
  const std::string command = std::move(line_);
  line_.clear();
  const auto text = instrument_.Execute(command);
  if (!text) return;
  Reply reply{*text + "\n"};
  faults_.Apply(command, reply);
  vanished_ = reply.portVanishes;
  if (!reply.bytes.empty()) Send(reply, chunks);
}

void SerialSide::Send(const Reply& reply, std::vector<Chunk>& chunks) {
  const double now = static_cast<double>(instrument_.Now().count());
  double at = std::max(busyUntil_, now) + static_cast<double>(reply.delay.count());
  const double perByte = baud_ > 0 ? 1000 * kBitsPerByte / baud_ : 0;
  const std::size_t piece =
      baud_ > 0 ? static_cast<std::size_t>(std::max(1.0, kPieceMilliseconds / perByte))
                : reply.bytes.size();
  for (std::size_t from = 0; from < reply.bytes.size(); from += piece) {
    std::string bytes = reply.bytes.substr(from, piece);
    at += perByte * static_cast<double>(bytes.size());
    const auto after = static_cast<long>(std::ceil(at - now));
    chunks.push_back({std::chrono::milliseconds(after), std::move(bytes)});
  }
  busyUntil_ = at;
}

}  // namespace tx5000

#include "support/FakeUsb.h"

#include <algorithm>
#include <utility>

namespace oriolemark {
namespace {

constexpr std::size_t kLargestBlock = 255;
constexpr Milliseconds kEmptyPoll{2};
constexpr int kPollsToGiveUp = 2500;

bool Spend(int& left) {
  if (left == 0) return false;
  if (left != FakeUsb::kNever) --left;
  return true;
}

}  // namespace

void FakeUsb::Offer(const std::string& bytes, Milliseconds delay) {
  offered_ += bytes;
  readyAt_ = clock_.Now() + delay;
}

bool FakeUsb::Write_USB(int, std::uint8_t byte) {
  if (!Spend(writesLeft)) return false;
  written += static_cast<char>(byte);
  if (byte != '\r') {
    frame_ += static_cast<char>(byte);
    return true;
  }
  const auto exchange = script_.Hear(std::exchange(frame_, ""));
  if (exchange) Offer(exchange->reply, exchange->delay);
  return true;
}

bool FakeUsb::Read_USB(int, int phase, int count, std::span<std::uint8_t> buffer) {
  if (phase != 0) return Fetch(count, buffer);
  if (!Spend(countsLeft)) return false;
  const bool ready = !offered_.empty() && clock_.Now() >= readyAt_;
  buffer[0] = ready ? static_cast<std::uint8_t>(std::min(offered_.size(), kLargestBlock)) : 0;
  emptyPolls_ = ready ? 0 : emptyPolls_ + 1;
  if (!ready) clock_.Block(kEmptyPoll);
  return emptyPolls_ < kPollsToGiveUp;
}

bool FakeUsb::Fetch(int count, std::span<std::uint8_t> buffer) {
  if (!Spend(fetchesLeft)) return false;
  const std::size_t taken = std::min(static_cast<std::size_t>(count), offered_.size());
  std::copy_n(offered_.begin(), taken, buffer.begin());
  offered_.erase(0, taken);
  return true;
}

bool FakeUsb::Control_Command_Send(int device, int request, int value, int index) {
  transfers.push_back("control " + std::to_string(device) + " " + std::to_string(request) + " " +
                      std::to_string(value) + " " + std::to_string(index));
  return Spend(transfersLeft);
}

bool FakeUsb::Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) {
  transfers.push_back("bulk " + std::to_string(device) + " " + std::to_string(count));
  if (!Spend(transfersLeft)) return false;
  const std::size_t taken =
      std::min({screen.size(), static_cast<std::size_t>(count), buffer.size()});
  std::copy_n(screen.begin(), taken, buffer.begin());
  return true;
}

}  // namespace oriolemark

#include "simulator/MemoryWindow.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tx5000 {
namespace {

constexpr int kRequests[] = {8, 9, 7};  // memory, count, address
constexpr std::uint32_t kScreenMemory = 0x500000;
constexpr std::uint32_t kScreenAddress = 0x90000;

}  // namespace

bool MemoryWindow::Control(int request, std::uint32_t number) {
  if (std::find(std::begin(kRequests), std::end(kRequests), request) == std::end(kRequests)) {
    instrument_.NoteUnknown("USB control request " + std::to_string(request));
  }
  // The first request may come at any time. It begins a new order if one was left unfinished.
  const std::size_t step = request == kRequests[0] ? 0 : step_;
  step_ = 0;
  const auto size = static_cast<std::uint32_t>(instrument_.ScreenMemory().size());
  if (step == std::size(kRequests) || request != kRequests[step]) return false;
  if (step == 0 && number != kScreenMemory) return false;
  if (step == 1) {
    if (number == 0 || number > size) return false;
    count_ = number;
  }
  if (step == 2) {
    if (number < kScreenAddress || number - kScreenAddress > size - count_) return false;
    offset_ = number - kScreenAddress;
  }
  step_ = step + 1;
  return true;
}

std::optional<std::string> MemoryWindow::Read(std::uint32_t count) {
  const bool ready = std::exchange(step_, 0) == std::size(kRequests) && count == count_;
  if (!ready) return std::nullopt;
  const auto first = instrument_.ScreenMemory().begin() + offset_;
  return std::string(first, first + count);
}

}  // namespace tx5000

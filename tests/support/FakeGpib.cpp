#include "support/FakeGpib.h"

#include <algorithm>

namespace oriolemark {

bool FakeGpib::Do(const std::string& name, const std::vector<int>& arguments,
                  std::string_view bytes) {
  std::string call = name;
  for (const int argument : arguments) call += " " + std::to_string(argument);
  if (!bytes.empty()) call += " " + std::string(bytes);
  calls.push_back(call);
  const auto failure = failures_.find(name);
  status_ = failure == failures_.end() ? GpibStatus{} : failure->second;
  return failure == failures_.end();
}

int FakeGpib::ibdev(int board, int primary, int secondary, int timeout, int eot, int eos) {
  return Do("ibdev", {board, primary, secondary, timeout, eot, eos}) ? kHandle : -1;
}

void FakeGpib::ibwrt(int device, std::string_view bytes) {
  if (!Do("ibwrt", {device}, bytes)) return;
  if (const auto exchange = script_.Hear(std::string(bytes))) reply_ = exchange->reply;
}

void FakeGpib::ibrd(int device, std::span<char> buffer) {
  if (!Do("ibrd", {device, static_cast<int>(buffer.size())})) return;
  if (reply_.empty()) {
    clock_.Block(Milliseconds(10000));
    status_ = {.ibsta = kGpibErr | 0x4000, .iberr = 6};
    return;
  }
  const std::size_t count = std::min(buffer.size(), reply_.size());
  std::copy_n(reply_.begin(), count, buffer.begin());
  reply_.erase(0, count);
  status_.ibsta = reply_.empty() ? kGpibEnd | 0x100 : 0x100;
  status_.ibcnt = status_.ibcntl = static_cast<int>(count);
}

}  // namespace oriolemark

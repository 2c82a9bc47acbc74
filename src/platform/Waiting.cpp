#include "platform/Waiting.h"

namespace oriolemark {

void Waiting::DoEvents() {
  if (closing_) return;
  ++depth_;
  events_.ServePending(Input());
  --depth_;
}

bool Waiting::WaitUntil(const std::function<bool()>& done) {
  while (!closing_) {
    if (done()) return true;
    WaitEvents(Milliseconds(-1));
  }
  return false;
}

bool Waiting::WaitForUser(const std::function<bool()>& done) {
  ++userWaits_;
  const bool held = WaitUntil(done);
  --userWaits_;
  return held;
}

void Waiting::WaitEvents(Milliseconds limit) {
  if (closing_) return;
  ++depth_;
  events_.ServeNext(limit, Input());
  --depth_;
}

void Waiting::Sleep(Milliseconds time) {
  if (!closing_ && time > Milliseconds::zero()) events_.Block(time);
}

void Waiting::BeginClosing() {
  closing_ = true;
  events_.Wake();
}

}  // namespace oriolemark

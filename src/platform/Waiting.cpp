#include "platform/Waiting.h"

namespace oriolemark {

void Waiting::DoEvents() {
  if (closing_) return;
  ++depth_;
  events_.ServePending(Input(For::Device));
  --depth_;
}

bool Waiting::WaitUntil(const std::function<bool()>& done) {
  return Wait(done, For::Device);
}

bool Waiting::WaitForUser(const std::function<bool()>& done) {
  return Wait(done, For::User);
}

void Waiting::WaitEvents(Milliseconds limit) {
  Turn(limit, For::Device);
}

bool Waiting::Wait(const std::function<bool()>& done, For whom) {
  while (!closing_) {
    if (done()) return true;
    Turn(Milliseconds(-1), whom);
  }
  return false;
}

void Waiting::Turn(Milliseconds limit, For whom) {
  if (closing_) return;
  ++depth_;
  events_.ServeNext(limit, Input(whom));
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

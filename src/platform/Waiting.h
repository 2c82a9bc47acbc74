#pragma once

#include "platform/EventSource.h"

namespace oriolemark {

// The only ways in which code lets time pass. All waits nest: a handler served inside a wait may
// start another one. Once the program is closing every wait returns at once and serves nothing, so
// that all nested handlers run to their ends.
class Waiting {
 public:
  explicit Waiting(EventSource& events) : events_(events) {}

  // Serves what is pending and returns at once.
  void DoEvents();

  // Serves events, asleep in between, until `done` holds (true) or the program is closing (false).
  bool WaitUntil(const std::function<bool()>& done);

  // The same for an answer of the user, to a window in front of all others: input is served at any
  // depth, for nothing else could end the wait.
  bool WaitForUser(const std::function<bool()>& done);

  // One turn of the same: at most `limit` asleep. For polls of a device that raises no event.
  void WaitEvents(Milliseconds limit);

  // Blocks everything, timers included.
  void Sleep(Milliseconds time);

  // The close of the program has been accepted. Cannot be taken back.
  void BeginClosing();
  bool Closing() const { return closing_; }

  int Depth() const { return depth_; }

 private:
  // From this depth of nested waits on, clicks and keys are held back until it falls.
  static constexpr int kInputDepth = 32;

  enum class For { Device, User };

  bool Wait(const std::function<bool()>& done, For whom);
  void Turn(Milliseconds limit, For whom);
  UserInput Input(For whom) const {
    return depth_ > kInputDepth && whom == For::Device ? UserInput::HeldBack : UserInput::Served;
  }

  EventSource& events_;
  int depth_ = 0;
  bool closing_ = false;
};

}  // namespace oriolemark

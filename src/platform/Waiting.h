#pragma once

#include "platform/EventSource.h"

namespace oriolemark {

// The only ways in which code lets time pass. All waits nest: a handler that runs inside a wait may
// start another one. Once the program is closing, every wait returns at once and serves nothing, so
// that all nested handlers run to their ends.
class Waiting {
 public:
  explicit Waiting(EventSource& events) : events_(events) {}

  // Serves what is pending and returns at once.
  void DoEvents();

  // Serves events and sleeps in between. Returns true when `done` holds, false when the program is
  // closing.
  bool WaitUntil(const std::function<bool()>& done);

  // The same, for the user's answer to a window in front of all others. Serves input at any depth,
  // because nothing else could end the wait.
  bool WaitForUser(const std::function<bool()>& done);

  // One round of the same, asleep for at most `limit`; a negative limit means no limit. For
  // code with its own loop, for instance to poll a device that raises no events.
  void WaitEvents(Milliseconds limit);

  // Blocks everything, including timers.
  void Sleep(Milliseconds time);

  // Call it when the close of the program is accepted. It cannot be undone.
  void BeginClosing();
  bool Closing() const { return closing_; }

  int Depth() const { return depth_; }

 private:
  // In waits nested deeper than this, clicks and keys are held back.
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

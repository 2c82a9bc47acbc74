#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace oriolemark {

using Milliseconds = std::chrono::milliseconds;

// One periodic alarm of an event source. Rings only while events are served; rings that were missed
// meanwhile coalesce into one.
class Alarm {
 public:
  virtual ~Alarm() = default;
  // Rings first one period from now. A running alarm starts anew.
  virtual void Start(Milliseconds period) = 0;
  virtual void Stop() = 0;
};

enum class UserInput { Served, HeldBack };

// The seam to whatever delivers events and lets time pass: the desktop's event loop, or a virtual
// clock. Nothing but `Waiting` calls the serving operations.
class EventSource {
 public:
  virtual ~EventSource() = default;
  // Serves what is due now and returns.
  virtual void ServePending(UserInput input) = 0;
  // Sleeps until the next event, at most `limit`, and serves it. Without a limit when negative.
  virtual void ServeNext(Milliseconds limit, UserInput input) = 0;
  // Blocks: nothing is served.
  virtual void Block(Milliseconds time) = 0;
  virtual std::unique_ptr<Alarm> MakeAlarm(std::function<void()> ring) = 0;
  // Wakes a sleeping `ServeNext` so that a changed condition is looked at.
  virtual void Wake() = 0;
};

}  // namespace oriolemark

#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace oriolemark {

using Milliseconds = std::chrono::milliseconds;

// A periodic alarm of an event source. It rings only while events are served. Missed rings are
// combined into one.
class Alarm {
 public:
  virtual ~Alarm() = default;
  // The first ring comes one period from now. Restarts a running alarm.
  virtual void Start(Milliseconds period) = 0;
  virtual void Stop() = 0;
};

enum class UserInput { Served, HeldBack };

// The interface to whatever delivers events and lets time pass: the desktop's event loop, or a
// virtual clock. Only `Waiting` calls the serving operations.
class EventSource {
 public:
  virtual ~EventSource() = default;
  // Serves what is due now, then returns.
  virtual void ServePending(UserInput input) = 0;
  // Sleeps until the next event, for at most `limit`, and serves it. A negative limit means no
  // limit.
  virtual void ServeNext(Milliseconds limit, UserInput input) = 0;
  // Blocks without serving events.
  virtual void Block(Milliseconds time) = 0;
  virtual std::unique_ptr<Alarm> MakeAlarm(std::function<void()> ring) = 0;
  // Wakes a sleeping `ServeNext`, so that its caller checks its condition again.
  virtual void Wake() = 0;
};

}  // namespace oriolemark

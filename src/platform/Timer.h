#pragma once

#include "platform/EventSource.h"

namespace oriolemark {

// A timer of a window. It ticks every `interval` ms while enabled. It never ticks with an interval
// of 0 or less, and never inside its own handler.
class Timer {
 public:
  Timer(EventSource& events, int interval, std::function<void()> tick);
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  int Interval() const { return interval_; }
  // Restarts a running timer with the new interval.
  void SetInterval(int milliseconds);

  bool Enabled() const { return enabled_; }
  // Enabling a running timer does not restart its interval.
  void SetEnabled(bool enabled);

 private:
  void Ring();
  void Restart();

  std::function<void()> tick_;
  std::unique_ptr<Alarm> alarm_;
  int interval_;
  bool enabled_ = false;
  bool ticking_ = false;
};

}  // namespace oriolemark

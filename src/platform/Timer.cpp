#include "platform/Timer.h"

#include <utility>

namespace oriolemark {

Timer::Timer(EventSource& events, int interval, std::function<void()> tick)
    : tick_(std::move(tick)), alarm_(events.MakeAlarm([this] { Ring(); })), interval_(interval) {}

void Timer::SetInterval(int milliseconds) {
  interval_ = milliseconds;
  Restart();
}

void Timer::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  Restart();
}

void Timer::Restart() {
  if (enabled_ && interval_ > 0) {
    alarm_->Start(Milliseconds(interval_));
  } else {
    alarm_->Stop();
  }
}

void Timer::Ring() {
  if (ticking_ || !enabled_) return;
  ticking_ = true;
  tick_();
  ticking_ = false;
}

}  // namespace oriolemark

#include "support/VirtualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace oriolemark {

class VirtualClock::ClockAlarm : public Alarm {
 public:
  ClockAlarm(VirtualClock& clock, std::function<void()> ring)
      : clock_(clock), ring_(std::move(ring)) {}
  ~ClockAlarm() override { Stop(); }

  void Start(Milliseconds period) override {
    Stop();
    period_ = period;
    key_ = clock_.Add(clock_.Now() + period, {.action = {}, .fromUser = false, .alarm = this});
  }
  void Stop() override {
    if (key_) clock_.queue_.erase(*key_);
    key_.reset();
  }
  // Rings that were missed while the clock moved on without serving are one ring.
  void Ring(Milliseconds due) {
    const Milliseconds next = std::max(due + period_, clock_.Now() + Milliseconds(1));
    key_ = clock_.Add(next, {.action = {}, .fromUser = false, .alarm = this});
    ring_();
  }

 private:
  VirtualClock& clock_;
  std::function<void()> ring_;
  Milliseconds period_{0};
  std::optional<Key> key_;
};

VirtualClock::Key VirtualClock::Add(Milliseconds due, Event event) {
  ++created_;
  const Key key{due, ties_ == TieOrder::AsCreated ? created_ : -created_};
  queue_[key] = std::move(event);
  return key;
}

void VirtualClock::After(Milliseconds delay, std::function<void()> action) {
  Add(now_ + delay, {.action = std::move(action), .fromUser = false, .alarm = nullptr});
}

void VirtualClock::UserAfter(Milliseconds delay, std::function<void()> action) {
  Add(now_ + delay, {.action = std::move(action), .fromUser = true, .alarm = nullptr});
}

std::unique_ptr<Alarm> VirtualClock::MakeAlarm(std::function<void()> ring) {
  return std::make_unique<ClockAlarm>(*this, std::move(ring));
}

VirtualClock::Queue::iterator VirtualClock::NextEvent(UserInput input) {
  return std::find_if(queue_.begin(), queue_.end(), [input](const auto& entry) {
    return input == UserInput::Served || !entry.second.fromUser;
  });
}

void VirtualClock::Serve(Queue::iterator event) {
  const Milliseconds due = event->first.first;
  const Event taken = std::move(event->second);
  queue_.erase(event);
  if (taken.alarm != nullptr) {
    taken.alarm->Ring(due);
  } else {
    taken.action();
  }
}

void VirtualClock::ServePending(UserInput input) {
  const std::int64_t newest = created_;
  for (auto next = NextEvent(input); next != queue_.end() && next->first.first <= now_;
       next = NextEvent(input)) {
    if (std::abs(next->first.second) > newest) return;
    Serve(next);
  }
}

void VirtualClock::ServeNext(Milliseconds limit, UserInput input) {
  const auto next = NextEvent(input);
  const bool limited = limit >= Milliseconds::zero();
  if (next == queue_.end() || (limited && next->first.first > now_ + limit)) {
    MoveTo(limited ? now_ + limit : deadline_ + Milliseconds(1));
    return;
  }
  MoveTo(std::max(now_, next->first.first));
  if (!stuck_) Serve(next);
}

void VirtualClock::MoveTo(Milliseconds time) {
  now_ = time;
  if (now_ <= deadline_ || stuck_) return;
  stuck_ = true;
  ADD_FAILURE() << "the story waits past its deadline";
  if (waiting_ != nullptr) waiting_->BeginClosing();
}

void VirtualClock::Block(Milliseconds time) {
  MoveTo(now_ + time);
}

void VirtualClock::Run(Milliseconds time) {
  const Milliseconds end = now_ + time;
  while (!stuck_ && !(waiting_ != nullptr && waiting_->Closing())) {
    const auto next = NextEvent(UserInput::Served);
    if (next == queue_.end() || next->first.first > end) break;
    MoveTo(std::max(now_, next->first.first));
    if (!stuck_) Serve(next);
  }
  if (!stuck_) now_ = std::max(now_, end);
}

}  // namespace oriolemark

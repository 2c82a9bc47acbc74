#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "platform/EventSource.h"
#include "platform/Waiting.h"

namespace oriolemark {

enum class TieOrder { AsCreated, Reversed };

// Time that passes only when the program waits. Scripted actions and alarms are events at exact
// times; a wait serves what is due, and else moves the clock to the next event. A story that waits
// past its deadline, or for an event that nothing will bring, fails the test and closes the program
// so that every wait ends.
class VirtualClock : public EventSource {
 public:
  explicit VirtualClock(TieOrder ties = TieOrder::AsCreated) : ties_(ties) {}

  Milliseconds Now() const { return now_; }
  // An event `delay` from now. A user's action is held back where input is.
  void After(Milliseconds delay, std::function<void()> action) {
    Add(now_ + delay, {.action = std::move(action)});
  }
  void UserAfter(Milliseconds delay, std::function<void()> action) {
    Add(now_ + delay, {.action = std::move(action), .fromUser = true});
  }
  // Serves events for so long, as the idle program would.
  void Run(Milliseconds time) {
    const Milliseconds end = now_ + time;
    const auto ended = [this] { return stuck_ || (waiting_ != nullptr && waiting_->Closing()); };
    while (!ended() && now_ < end) ServeNext(end - now_, UserInput::Served);
    if (!ended()) ServePending(UserInput::Served);
  }

  // Ends a stuck story. Ten minutes of virtual time unless set otherwise.
  void SetDeadline(Milliseconds at) { deadline_ = at; }
  void CloseWhenStuck(Waiting& waiting) { waiting_ = &waiting; }
  bool Stuck() const { return stuck_; }

  void ServePending(UserInput input) override {
    const std::int64_t newest = created_;
    for (auto next = NextEvent(input); next != queue_.end() && next->first.first <= now_;
         next = NextEvent(input)) {
      if (std::abs(next->first.second) > newest) return;
      Serve(next);
    }
  }
  void ServeNext(Milliseconds limit, UserInput input) override {
    const auto next = NextEvent(input);
    const bool limited = limit >= Milliseconds::zero();
    if (next == queue_.end() || (limited && next->first.first > now_ + limit)) {
      MoveTo(limited ? now_ + limit : deadline_ + Milliseconds(1));
      return;
    }
    MoveTo(std::max(now_, next->first.first));
    if (!stuck_) Serve(next);
  }
  void Block(Milliseconds time) override { MoveTo(now_ + time); }
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()> ring) override {
    return std::make_unique<ClockAlarm>(*this, std::move(ring));
  }
  void Wake() override {}

 private:
  class ClockAlarm;
  struct Event {
    std::function<void()> action = {};
    bool fromUser = false;
    ClockAlarm* alarm = nullptr;
  };
  // Due time, then order of creation: negative and falling where ties are reversed.
  using Key = std::pair<Milliseconds, std::int64_t>;
  using Queue = std::map<Key, Event>;

  class ClockAlarm : public Alarm {
   public:
    ClockAlarm(VirtualClock& clock, std::function<void()> ring)
        : clock_(clock), ring_(std::move(ring)) {}
    ~ClockAlarm() override { Stop(); }

    void Start(Milliseconds period) override {
      Stop();
      period_ = period;
      key_ = clock_.Add(clock_.Now() + period, {.alarm = this});
    }
    void Stop() override {
      if (key_) clock_.queue_.erase(*key_);
      key_.reset();
    }
    // Rings that were missed while the clock moved on without serving are one ring.
    void Ring(Milliseconds due) {
      key_ = clock_.Add(std::max(due + period_, clock_.Now() + Milliseconds(1)), {.alarm = this});
      ring_();
    }

   private:
    VirtualClock& clock_;
    std::function<void()> ring_;
    Milliseconds period_{0};
    std::optional<Key> key_;
  };

  Key Add(Milliseconds due, Event event) {
    ++created_;
    const Key key{due, ties_ == TieOrder::AsCreated ? created_ : -created_};
    queue_[key] = std::move(event);
    return key;
  }
  Queue::iterator NextEvent(UserInput input) {
    return std::find_if(queue_.begin(), queue_.end(), [input](const auto& entry) {
      return input == UserInput::Served || !entry.second.fromUser;
    });
  }
  void Serve(Queue::iterator event) {
    const Milliseconds due = event->first.first;
    const Event taken = std::move(event->second);
    queue_.erase(event);
    taken.alarm != nullptr ? taken.alarm->Ring(due) : taken.action();
  }
  void MoveTo(Milliseconds time) {
    now_ = time;
    if (now_ <= deadline_ || stuck_) return;
    stuck_ = true;
    ADD_FAILURE() << "the story waits past its deadline";
    if (waiting_ != nullptr) waiting_->BeginClosing();
  }

  TieOrder ties_;
  Milliseconds now_{0};
  Milliseconds deadline_{600000};
  std::int64_t created_ = 0;
  Queue queue_;
  Waiting* waiting_ = nullptr;
  bool stuck_ = false;
};

}  // namespace oriolemark

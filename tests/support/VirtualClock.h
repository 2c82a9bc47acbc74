#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "platform/EventSource.h"
#include "platform/Waiting.h"

namespace oriolemark {

// Time that passes only when the program waits. Scripted actions and alarms are events at exact
// times; a wait serves what is due, and else moves the clock to the next event. A story that waits
// past its deadline, or for an event that nothing will bring, fails the test and closes the program
// so that every wait ends.
class VirtualClock : public EventSource {
 public:
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
    while (!waiting.Closing() && now_ < end) ServeNext(end - now_, UserInput::Served);
    if (!waiting.Closing()) ServePending(UserInput::Served);
  }

  // Ends a stuck story. Ten minutes of virtual time unless set otherwise.
  void SetDeadline(Milliseconds at) { deadline_ = at; }
  bool Stuck() const { return now_ > deadline_; }
  // Ends what waits for another reason than the program.
  std::function<void()> onStuck = [] {};

  void ServePending(UserInput input) override {
    const std::int64_t newest = created_;
    for (auto next = NextEvent(input); next != queue_.end() && next->first.first <= now_;
         next = NextEvent(input)) {
      if (next->first.second > newest) return;
      Serve(next);
    }
  }
  void ServeNext(Milliseconds limit, UserInput input) override {
    const auto next = NextEvent(input);
    const bool limited = limit >= Milliseconds::zero();
    const Milliseconds end = limited ? now_ + limit : deadline_ + Milliseconds(1);
    if (next == queue_.end() || next->first.first > end) return MoveTo(end);
    MoveTo(std::max(now_, next->first.first));
    if (!Stuck()) Serve(next);
  }
  void Block(Milliseconds time) override { MoveTo(now_ + time); }
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()> ring) override {
    return std::make_unique<ClockAlarm>(*this, std::move(ring));
  }
  void Wake() override {}

  Waiting waiting{*this};

 private:
  struct Event {
    std::function<void()> action;
    bool fromUser = false;
  };
  // Due time, then order of creation, which counts from 1.
  using Key = std::pair<Milliseconds, std::int64_t>;
  using Queue = std::map<Key, Event>;

  class ClockAlarm : public Alarm {
   public:
    ClockAlarm(VirtualClock& clock, std::function<void()> ring)
        : clock_(clock), ring_(std::move(ring)) {}
    ~ClockAlarm() override { Stop(); }

    void Start(Milliseconds period) override {
      Stop();
      RingAt(clock_.now_ + period, period);
    }
    void Stop() override { clock_.queue_.erase(key_); }

   private:
    // Rings that were missed while the clock moved on without serving are one ring.
    void RingAt(Milliseconds due, Milliseconds period) {
      const auto ring = [this, due, period] {
        RingAt(std::max(due + period, clock_.now_ + Milliseconds(1)), period);
        ring_();
      };
      key_ = clock_.Add(due, {.action = ring});
    }

    VirtualClock& clock_;
    std::function<void()> ring_;
    Key key_;
  };

  Key Add(Milliseconds due, Event event) {
    const Key key{due, ++created_};
    queue_[key] = std::move(event);
    return key;
  }
  Queue::iterator NextEvent(UserInput input) {
    return std::find_if(queue_.begin(), queue_.end(), [input](const auto& entry) {
      return input == UserInput::Served || !entry.second.fromUser;
    });
  }
  void Serve(Queue::iterator event) { queue_.extract(event).mapped().action(); }
  void MoveTo(Milliseconds time) {
    const bool wasStuck = Stuck();
    now_ = time;
    if (wasStuck || !Stuck()) return;
    ADD_FAILURE() << "the story waits past its deadline";
    waiting.BeginClosing();
    onStuck();
  }

  Milliseconds now_{0};
  Milliseconds deadline_{600000};
  std::int64_t created_ = 0;
  Queue queue_;
};

}  // namespace oriolemark

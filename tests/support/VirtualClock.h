#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

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
  void After(Milliseconds delay, std::function<void()> action);
  void UserAfter(Milliseconds delay, std::function<void()> action);
  // Serves events for so long, as the idle program would.
  void Run(Milliseconds time);

  // Ends a stuck story. Ten minutes of virtual time unless set otherwise.
  void SetDeadline(Milliseconds at) { deadline_ = at; }
  void CloseWhenStuck(Waiting& waiting) { waiting_ = &waiting; }
  bool Stuck() const { return stuck_; }

  void ServePending(UserInput input) override;
  void ServeNext(Milliseconds limit, UserInput input) override;
  void Block(Milliseconds time) override;
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()> ring) override;
  void Wake() override {}

 private:
  class ClockAlarm;
  struct Event {
    std::function<void()> action;
    bool fromUser = false;
    ClockAlarm* alarm = nullptr;
  };
  // Due time, then order of creation: negative and falling where ties are reversed.
  using Key = std::pair<Milliseconds, std::int64_t>;
  using Queue = std::map<Key, Event>;

  Key Add(Milliseconds due, Event event);
  Queue::iterator NextEvent(UserInput input);
  void Serve(Queue::iterator event);
  void MoveTo(Milliseconds time);

  TieOrder ties_;
  Milliseconds now_{0};
  Milliseconds deadline_{600000};
  std::int64_t created_ = 0;
  Queue queue_;
  Waiting* waiting_ = nullptr;
  bool stuck_ = false;
};

}  // namespace oriolemark

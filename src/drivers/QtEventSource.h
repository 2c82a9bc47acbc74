#pragma once

#include "platform/EventSource.h"

namespace oriolemark {

// The desktop's own event loop. Belongs to the application's thread; needs a QCoreApplication that
// outlives it. Only `Wake` may be called from another thread.
class QtEventSource : public EventSource {
 public:
  void ServePending(UserInput input) override;
  void ServeNext(Milliseconds limit, UserInput input) override;
  void Block(Milliseconds time) override;
  // The alarm may be destroyed from inside its own ring. It does not ring inside its own ring.
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()> ring) override;
  void Wake() override;

  // Changes whenever events are served.
  unsigned Turns() const { return turns_; }

 private:
  unsigned turns_ = 0;
};

}  // namespace oriolemark

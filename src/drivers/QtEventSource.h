#pragma once

#include "platform/EventSource.h"

namespace oriolemark {

// The desktop's own event loop. Use it in the application's thread only. The QCoreApplication
// must outlive it. Only `Wake` may be called from another thread.
class QtEventSource : public EventSource {
 public:
  void ServePending(UserInput input) override;
  void ServeNext(Milliseconds limit, UserInput input) override;
  void Block(Milliseconds time) override;
  // The `ring` function may destroy its alarm. The alarm does not ring again while `ring` runs.
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()> ring) override;
  void Wake() override;

  // A number that changes whenever events are served.
  unsigned Turns() const { return turns_; }

 private:
  unsigned turns_ = 0;
};

}  // namespace oriolemark

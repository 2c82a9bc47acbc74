#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace oriolemark {

// The system's requests to end, from a terminal, the end of a session, or "kill". Create this
// before the toolkit starts its threads: they inherit that these signals are blocked and do not end
// the process. A request before Watch() is kept. A signal that is ignored when the program starts
// stays so. The others stay blocked to the end of the process, which has its own exit code then.
class EndSignals {
 public:
  EndSignals();
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  // Calls `onEnd` from the event loop at each request from now on. Needs an application object.
  void Watch(std::function<void()> onEnd);

 private:
  int descriptor_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace oriolemark

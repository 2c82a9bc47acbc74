#pragma once

#include <csignal>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace oriolemark {

// The system's requests to end: of a terminal, a session that ends, or "kill". Made before the
// toolkit starts its threads, which take over that these signals do not end the process by
// themselves. What comes before Watch() is kept.
class EndSignals {
 public:
  EndSignals();
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  // Calls `onEnd` from the event loop at each request from now on. There has to be an application.
  void Watch(std::function<void()> onEnd);

 private:
  int descriptor_ = -1;
  sigset_t before_{};
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace oriolemark

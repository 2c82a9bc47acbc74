#include "drivers/EndSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>
#include <utility>

namespace oriolemark {

namespace {

// A program that was started by "nohup", or in the background of a script, is not to end.
bool IsIgnored(int signal) {
  struct sigaction action {};
  return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

EndSignals::EndSignals() {
  sigset_t ends;
  sigemptyset(&ends);
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
    if (!IsIgnored(signal)) sigaddset(&ends, signal);
  }
  descriptor_ = ::signalfd(-1, &ends, SFD_CLOEXEC | SFD_NONBLOCK);
  // Without a descriptor the signals still end the process.
  pthread_sigmask(SIG_BLOCK, descriptor_ >= 0 ? &ends : nullptr, nullptr);
}

// The signals stay blocked. A second request would end the process by its signal, in place of its
// own exit code.
EndSignals::~EndSignals() {
  notifier_.reset();
  if (descriptor_ >= 0) ::close(descriptor_);
}

void EndSignals::Watch(std::function<void()> onEnd) {
  if (descriptor_ < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated,
                   [descriptor = descriptor_, onEnd = std::move(onEnd)] {
                     signalfd_siginfo request{};
                     while (::read(descriptor, &request, sizeof request) > 0) continue;
                     onEnd();
                   });
}

}  // namespace oriolemark

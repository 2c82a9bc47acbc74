#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Desk.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtSerialPort.h"
#include "simulator/program/PseudoTerminal.h"

namespace oriolemark {
namespace {

constexpr int kWarmUps = 5;

std::string MakeReply() {
  std::string reply;
  while (reply.size() < 85000) reply += "0x7D ";
  return reply + '\n';
}

// Keeps this thread, and everything that it starts meanwhile, on the first core that it may use.
class OneCore {
 public:
  OneCore() {
    sched_getaffinity(0, sizeof before_, &before_);
    cpu_set_t one;
    CPU_ZERO(&one);
    int core = 0;
    while (!CPU_ISSET(core, &before_)) ++core;
    CPU_SET(core, &one);
    sched_setaffinity(0, sizeof one, &one);
  }
  ~OneCore() { sched_setaffinity(0, sizeof before_, &before_); }
  OneCore(const OneCore&) = delete;
  OneCore& operator=(const OneCore&) = delete;

 private:
  cpu_set_t before_;
};

// A process on the same core that answers each command with the reply, as fast as the line allows.
class Instrument {
 public:
  Instrument() : terminal_(PseudoTerminal::Open("", error_)) {
    if (!terminal_) std::abort();
    process_ = fork();
    if (process_ != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string reply = MakeReply();
    for (;;) {
      Await(POLLIN);
      if (terminal_->Read().find('\r') == std::string::npos) continue;
      for (std::string_view rest = reply; !rest.empty();) {
        rest.remove_prefix(terminal_->Write(rest));
        if (!rest.empty()) Await(POLLOUT);
      }
    }
  }
  ~Instrument() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  Instrument(const Instrument&) = delete;
  Instrument& operator=(const Instrument&) = delete;

  const std::string& Path() const { return terminal_->Path(); }

 private:
  void Await(short what) {
    pollfd line{terminal_->Descriptor(), what, 0};
    poll(&line, 1, -1);
  }

  std::string error_;
  std::unique_ptr<PseudoTerminal> terminal_;
  pid_t process_ = 0;
};

// Skips the pause after a command. It is for slow lines, and this line is not slow.
class UnpacedEvents : public QtEventSource {
 public:
  void Block(Milliseconds) override {}
};

void AskOverLine(benchmark::State& state) {
  const OneCore core;
  const Instrument instrument;
  UnpacedEvents events;
  QtSerialPort port([&](int) { return instrument.Path(); });
  Desk desk(events, port);
  desk.link.rs232.RS232Init();
  const std::size_t length = MakeReply().size() - 1;
  const auto ask = [&] {
    if (desk.scope.AskScope(":DATA:CHANNEL1").size() != length) std::abort();
  };
  for (int i = 0; i < kWarmUps; ++i) ask();
  for (auto _ : state) ask();
}

void ReadOverLine(benchmark::State& state) {
  const OneCore core;
  const Instrument instrument;
  const int line = open(instrument.Path().c_str(), O_RDWR | O_NOCTTY);
  const auto ask = [&] {
    if (write(line, ":DATA:CHANNEL1\r", 15) != 15) std::abort();
    std::array<char, 4096> buffer;
    ssize_t count = 0;
    do {
      count = read(line, buffer.data(), buffer.size());
      if (count <= 0) std::abort();
    } while (buffer[static_cast<std::size_t>(count) - 1] != '\n');
  };
  for (int i = 0; i < kWarmUps; ++i) ask();
  for (auto _ : state) ask();
  close(line);
}

BENCHMARK(AskOverLine)->UseRealTime();
BENCHMARK(ReadOverLine)->UseRealTime();

}  // namespace
}  // namespace oriolemark

#include "simulator/program/Session.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <optional>
#include <vector>

namespace {

using std::chrono::milliseconds;

// A far end that never reads must not make the queue grow for ever.
constexpr std::size_t kMostOutgoing = 4 << 20;
constexpr std::size_t kLongestLine = 4096;

int OpenSignals() {
  sigset_t wanted;
  sigemptyset(&wanted);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&wanted, number);
  sigprocmask(SIG_BLOCK, &wanted, nullptr);
  signal(SIGPIPE, SIG_IGN);
  return signalfd(-1, &wanted, SFD_CLOEXEC | SFD_NONBLOCK);
}

void Say(const std::string& text) {
  std::cout << text << std::endl;
}

void Complain(const std::string& text) {
  std::cerr << "tx5000sim: " << text << std::endl;
}

}  // namespace

Session::Session(Options options)
    : options_(std::move(options)),
      instrument_(options_.identity, options_.seed),
      side_(instrument_),
      console_(instrument_, side_),
      begin_(std::chrono::steady_clock::now()) {}

Session::~Session() {
  if (signals_ >= 0) close(signals_);
}

int Session::Run() {
  if (!Prepare()) return 1;
  while (!ended_) WaitOnce();
  return 0;
}

bool Session::Prepare() {
  signals_ = OpenSignals();
  side_.SetBaud(options_.baud);
  if (!log_.Open(options_.logPath)) {
    Complain("cannot write " + options_.logPath);
    return false;
  }
  for (const std::string& text : options_.faults) {
    if (auto fault = tx5000::ParseFault(text)) side_.GetFaults().Add(std::move(*fault));
  }
  if (!PlugIn()) return false;
  for (const std::string& line : options_.lines) CarryOut(line);
  return true;
}

bool Session::PlugIn() {
  line_.reset();
  socket_.reset();
  const bool opened =
      (!options_.HasSerialLine() || OpenLine()) && (options_.socketPath.empty() || OpenSocket());
  if (!opened) {
    Unplug();
    return false;
  }
  // Only when all of them are ready, because a script may wait for the first of these lines.
  if (line_) TellReady(line_->Path());
  if (socket_) TellReady(socket_->Path());
  return true;
}

void Session::TellReady(const std::string& path) {
  log_.Remark(Elapsed(), "ready " + path);
  Say("ready " + path);
}

bool Session::OpenLine() {
  std::string error;
  line_ = PseudoTerminal::Open(options_.linkPath, error);
  if (!line_) Complain(error);
  side_.PlugIn();
  return line_ != nullptr;
}

bool Session::OpenSocket() {
  std::string error;
  const Bench bench{instrument_, side_.GetFaults(), log_, options_.gpibAddress};
  socket_ = BusSocket::Open(options_.socketPath, bench, error);
  if (!socket_) Complain(error);
  return socket_ != nullptr;
}

void Session::Unplug() {
  if (line_ || socket_) log_.Remark(Elapsed(), "the port is gone");
  line_.reset();
  socket_.reset();
  outgoing_.clear();
  outgoingBytes_ = 0;
}

milliseconds Session::Elapsed() const {
  return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - begin_);
}

void Session::PassTime() {
  instrument_.Advance(Elapsed() - instrument_.Now());
}

bool Session::IsSomethingDue() const {
  return !outgoing_.empty() && outgoing_.front().due <= Elapsed();
}

int Session::MillisecondsToWait() const {
  std::optional<milliseconds> next = socket_ ? socket_->NextDue() : std::nullopt;
  if (!outgoing_.empty() && !IsSomethingDue()) {
    next = next ? std::min(*next, outgoing_.front().due) : outgoing_.front().due;
  }
  if (!next) return -1;
  constexpr milliseconds kLongestWait = std::chrono::hours(1);
  const milliseconds left = std::min(*next - Elapsed(), kLongestWait);
  return left.count() > 0 ? static_cast<int>(left.count()) + 1 : 0;
}

void Session::WaitOnce() {
  const short wanted = static_cast<short>(POLLIN | (IsSomethingDue() ? POLLOUT : 0));
  // poll ignores a negative descriptor.
  std::vector<pollfd> waiting{{signals_, POLLIN, 0},
                              {consoleOpen_ ? STDIN_FILENO : -1, POLLIN, 0},
                              {line_ ? line_->Descriptor() : -1, wanted, 0}};
  const std::size_t own = waiting.size();
  if (socket_) socket_->AddTo(waiting);
  if (poll(waiting.data(), waiting.size(), MillisecondsToWait()) < 0) return;
  PassTime();
  // Comes before the console, because a console command may close what the results belong to.
  if (socket_) socket_->Serve(waiting.data() + own);
  if (waiting[0].revents != 0) ended_ = true;
  if (line_ && (waiting[2].revents & POLLIN) != 0) ReceiveFromLine();
  SendWhatIsDue();
  if (side_.HasVanished() || (socket_ && socket_->HasVanished())) Unplug();
  if (waiting[1].revents != 0) ReadConsole();
}

void Session::ReceiveFromLine() {
  const std::string bytes = line_->Read();
  if (bytes.empty()) return;
  log_.Note(Elapsed(), ByteLog::Direction::kToInstrument, bytes);
  const int before = instrument_.UnknownCommands();
  for (tx5000::Chunk& chunk : side_.Receive(bytes)) {
    if (outgoingBytes_ + chunk.bytes.size() > kMostOutgoing) break;
    outgoingBytes_ += chunk.bytes.size();
    outgoing_.push_back({instrument_.Now() + chunk.after, std::move(chunk.bytes)});
  }
  NoteUnknown(before);
}

void Session::NoteUnknown(int before) {
  const int more = instrument_.UnknownCommands() - before;
  if (more > 0) log_.Remark(Elapsed(), "not understood: " + std::to_string(more));
}

void Session::SendWhatIsDue() {
  while (line_ && IsSomethingDue()) {
    Outgoing& first = outgoing_.front();
    const std::size_t sent = line_->Write(first.bytes);
    log_.Note(Elapsed(), ByteLog::Direction::kFromInstrument, first.bytes.substr(0, sent));
    outgoingBytes_ -= sent;
    first.bytes.erase(0, sent);
    if (!first.bytes.empty()) return;  // the far end does not take more now
    outgoing_.pop_front();
  }
}

void Session::ReadConsole() {
  std::array<char, 4096> buffer;
  const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
  if (count <= 0) {
    // The end of a script or of "</dev/null" does not stop the program. The end of a person's input
    // does.
    consoleOpen_ = false;
    ended_ = ended_ || isatty(STDIN_FILENO) != 0;
    return;
  }
  typed_.append(buffer.data(), static_cast<std::size_t>(count));
  for (auto end = typed_.find('\n'); end != std::string::npos && !ended_; end = typed_.find('\n')) {
    const std::string line = typed_.substr(0, end);
    typed_.erase(0, end + 1);
    CarryOut(line);
  }
  if (typed_.size() > kLongestLine) typed_.clear();
}

void Session::CarryOut(const std::string& line) {
  PassTime();
  const Console::Answer answer = console_.Execute(line);
  if (!answer.text.empty()) Say(answer.text);
  if (!line.empty()) log_.Remark(Elapsed(), "console: " + line);
  if (answer.wish == Console::Wish::kQuit) ended_ = true;
  if (answer.wish == Console::Wish::kUnplug) Unplug();
  if (answer.wish == Console::Wish::kPlugIn && !line_ && !socket_) PlugIn();
}

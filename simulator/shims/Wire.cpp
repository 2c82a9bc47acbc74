#include "simulator/shims/Wire.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

namespace tx5000 {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kGreetingTime(2000);

}  // namespace

std::vector<std::string> SocketPaths() {
  const char* value = std::getenv("TX5000SIM_SOCKET");
  std::string_view rest = value != nullptr ? value : "";
  std::vector<std::string> paths;
  while (!rest.empty()) {
    const auto colon = std::min(rest.find(':'), rest.size());
    if (colon > 0) paths.emplace_back(rest.substr(0, colon));
    rest.remove_prefix(std::min(colon + 1, rest.size()));
  }
  return paths;
}

bool Wire::Reach(const std::string& path, char connector, int address) {
  if (path == path_ && IsAlive()) return true;
  Close();
  if (!Connect(path)) return false;
  const char arguments[] = {connector, static_cast<char>(address)};
  if (Ask(protocol::kOpen, {arguments, sizeof arguments}, kGreetingTime).IsDone()) return true;
  Close();
  return false;
}

// The simulator sends nothing between requests, so readable input means that the connection has
// ended.
bool Wire::IsAlive() const {
  pollfd state{descriptor_, POLLIN | POLLRDHUP, 0};
  return descriptor_ >= 0 && poll(&state, 1, 0) == 0;
}

bool Wire::Connect(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return false;
  path.copy(address.sun_path, path.size());
  descriptor_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  path_ = path;
  const auto* where = reinterpret_cast<const sockaddr*>(&address);
  // Does not wait: a simulator that has been stopped accepts no more connections after some time.
  if (descriptor_ >= 0 && connect(descriptor_, where, sizeof address) == 0) return true;
  Close();
  return false;
}

void Wire::Close() {
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = -1;
  path_.clear();
}

Wire::Answer Wire::Ask(protocol::Kind kind, std::string_view arguments, milliseconds limit) {
  const auto deadline = steady_clock::now() + limit;
  Answer answer;
  std::string head;
  std::string body;
  if (Send(protocol::PackMessage(kind, arguments), deadline)) {
    answer.delivery = Receive(head, protocol::kLengthSize, deadline);
  }
  if (answer.delivery == Delivery::kAnswered) {
    const std::uint32_t length = protocol::UnpackNumber(head, protocol::kLengthSize);
    const bool valid = length > 0 && length <= protocol::kLongestAnswer;
    answer.delivery = valid ? Receive(body, length, deadline) : Delivery::kLost;
  }
  if (answer.delivery == Delivery::kAnswered) {
    answer.outcome = static_cast<protocol::Outcome>(body[0]);
    answer.result = body.substr(1);
  } else {
    Close();
  }
  return answer;
}

bool Wire::Await(short events, steady_clock::time_point deadline) const {
  for (;;) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now()).count();
    pollfd state{descriptor_, events, 0};
    const int ready = poll(&state, 1, static_cast<int>(std::clamp<long>(left, 0, 3600000)));
    if (ready > 0) return true;
    if (ready == 0 && left <= 0) return false;
  }
}

bool Wire::Send(std::string_view bytes, steady_clock::time_point deadline) {
  while (!bytes.empty()) {
    const ssize_t count = send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    if (count >= 0 || errno == EINTR) continue;
    if (errno != EAGAIN || !Await(POLLOUT, deadline)) return false;
  }
  return true;
}

Wire::Delivery Wire::Receive(std::string& bytes, std::size_t count,
                             steady_clock::time_point deadline) {
  std::array<char, 16384> buffer;
  while (bytes.size() < count) {
    if (!Await(POLLIN, deadline)) return Delivery::kLate;
    const auto wanted = std::min(buffer.size(), count - bytes.size());
    const ssize_t got = recv(descriptor_, buffer.data(), wanted, 0);
    if (got == 0 || (got < 0 && errno != EINTR)) return Delivery::kLost;
    if (got > 0) bytes.append(buffer.data(), static_cast<std::size_t>(got));
  }
  return Delivery::kAnswered;
}

}  // namespace tx5000

#include "simulator/program/BusSocket.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

constexpr std::size_t kMostClients = 32;

bool IsSocket(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

}  // namespace

std::unique_ptr<BusSocket> BusSocket::Open(const std::string& path, Bench bench,
                                           std::string& error) {
  std::unique_ptr<BusSocket> made(new BusSocket(path, bench));
  if (made->Listen()) return made;
  error = "cannot make the socket " + path + ": " + std::strerror(errno);
  return nullptr;
}

bool BusSocket::Listen() {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path_.size() >= sizeof address.sun_path) {
    errno = ENAMETOOLONG;
    return false;
  }
  path_.copy(address.sun_path, path_.size());
  listener_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (listener_ < 0) return false;
  if (IsSocket(path_)) unlink(path_.c_str());
  const mode_t before = umask(S_IRWXG | S_IRWXO);
  const bool bound =
      bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  umask(before);
  struct stat status;
  if (!bound || lstat(path_.c_str(), &status) != 0) return false;
  device_ = status.st_dev;
  file_ = status.st_ino;
  return listen(listener_, static_cast<int>(kMostClients)) == 0;
}

BusSocket::~BusSocket() {
  struct stat status;
  const bool ours = file_ != 0 && lstat(path_.c_str(), &status) == 0 && status.st_dev == device_ &&
                    status.st_ino == file_;
  if (ours) unlink(path_.c_str());
  if (listener_ >= 0) close(listener_);
}

void BusSocket::AddTo(std::vector<pollfd>& waiting) const {
  waiting.push_back({listener_, POLLIN, 0});
  for (const auto& client : clients_) {
    waiting.push_back({client->Descriptor(), client->PollEvents(), 0});
  }
}

void BusSocket::Serve(const pollfd* results) {
  for (std::size_t i = 0; i < clients_.size(); ++i) {
    BusClient& client = *clients_[i];
    // A call that only fails shows that the other end has gone.
    if ((results[i + 1].revents & ~POLLOUT) != 0) client.Receive();
    client.Serve();
  }
  std::erase_if(clients_, [](const auto& client) { return client->IsOver(); });
  if (results[0].revents != 0) Accept();
}

void BusSocket::Accept() {
  const int descriptor = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (descriptor < 0) return;
  if (clients_.size() < kMostClients) {
    clients_.push_back(std::make_unique<BusClient>(descriptor, bench_));
  } else {
    close(descriptor);
  }
}

std::optional<std::chrono::milliseconds> BusSocket::NextDue() const {
  std::optional<std::chrono::milliseconds> next;
  for (const auto& client : clients_) {
    const auto due = client->NextDue();
    if (due && (!next || *due < *next)) next = due;
  }
  return next;
}

bool BusSocket::HasVanished() const {
  return std::any_of(clients_.begin(), clients_.end(),
                     [](const auto& client) { return client->HasVanished(); });
}

#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/shims/Protocol.h"

namespace tx5000 {

// The paths in TX5000SIM_SOCKET, separated by colons. Empty if it is not set.
std::vector<std::string> SocketPaths();

// A connection from a library to one simulated instrument. It must not be used from two threads at
// once.
class Wire {
 public:
  enum class Delivery { kAnswered, kLate, kLost };
  struct Answer {
    Delivery delivery = Delivery::kLost;
    protocol::Outcome outcome = protocol::kFailed;
    std::string result;

    bool IsDone() const { return delivery == Delivery::kAnswered && outcome == protocol::kDone; }
  };

  Wire() = default;
  ~Wire() { Close(); }
  Wire(const Wire&) = delete;
  Wire& operator=(const Wire&) = delete;

  // Connects to that instrument, unless it is connected already. Returns false if nobody is there,
  // or nobody with that GPIB address. Unread bytes of an earlier instrument are lost.
  bool Reach(const std::string& path, char connector, int address);

  // Blocks until the answer comes. Closes the wire if the answer is late or lost.
  Answer Ask(protocol::Kind kind, std::string_view arguments, std::chrono::milliseconds limit);

 private:
  bool IsAlive() const;
  bool Connect(const std::string& path);
  void Close();
  // Returns false when the time is over.
  bool Await(short events, std::chrono::steady_clock::time_point deadline) const;
  bool Send(std::string_view bytes, std::chrono::steady_clock::time_point deadline);
  Delivery Receive(std::string& bytes, std::size_t count,
                   std::chrono::steady_clock::time_point deadline);

  int descriptor_ = -1;
  std::string path_;
};

}  // namespace tx5000

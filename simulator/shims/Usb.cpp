// The calls of the instrument's USB library. The instruments are those in TX5000SIM_SOCKET, in that
// order. For an instrument that is not there each call fails; the calls work again when it is back.

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/shims/Wire.h"

namespace {

using tx5000::Wire;
namespace protocol = tx5000::protocol;

constexpr std::chrono::milliseconds kPatience(5000);
constexpr std::uint32_t kMostCounted = 255;  // the count is one byte
constexpr short kSuccess = 1;
constexpr short kFailure = 0;

enum Phase { kCountPhase = 0, kFetchPhase = 1 };

struct Bus {
  std::mutex lock;
  std::map<int, Wire> wires;
};

Bus& TheBus() {
  static Bus bus;
  return bus;
}

Wire::Answer Ask(int device, protocol::Kind kind, const std::string& arguments) {
  Bus& bus = TheBus();
  const std::lock_guard guard(bus.lock);
  const auto paths = tx5000::SocketPaths();
  if (device < 0 || static_cast<std::size_t>(device) >= paths.size()) return {};
  Wire& wire = bus.wires[device];
  if (!wire.Reach(paths[static_cast<std::size_t>(device)], 'u', 0)) return {};
  return wire.Ask(kind, arguments, kPatience);
}

bool IsWord(int number) {
  return number >= 0 && number <= 0xFFFF;
}

short CountWaiting(int device, unsigned char* buffer) {
  const auto answer = Ask(device, protocol::kWaiting, {});
  if (!answer.IsDone()) return kFailure;
  const std::uint32_t count = protocol::UnpackNumber(answer.result, 4);
  *buffer = static_cast<unsigned char>(std::min(count, kMostCounted));
  return kSuccess;
}

// Fetches exactly `count` bytes by a request of this kind, or none.
short Take(int device, protocol::Kind kind, int count, unsigned char* buffer) {
  const auto wanted = static_cast<std::uint32_t>(count);
  const auto answer = Ask(device, kind, protocol::PackNumber(wanted, 4));
  if (!answer.IsDone() || answer.result.size() != wanted) return kFailure;
  std::copy(answer.result.begin(), answer.result.end(), buffer);
  return kSuccess;
}

}  // namespace

extern "C" {

short GetDeviceNum() {
  constexpr std::size_t kMost = 127;  // addresses on a bus
  return static_cast<short>(std::min(tx5000::SocketPaths().size(), kMost));
}

short Write_USB(int device, unsigned char byte) {
  const std::string arguments{'\0', static_cast<char>(byte)};
  return Ask(device, protocol::kWrite, arguments).IsDone() ? kSuccess : kFailure;
}

short Read_USB(int device, int phase, int count, unsigned char* buffer) {
  if (!buffer) return kFailure;
  if (phase == kCountPhase && count == 1) return CountWaiting(device, buffer);
  const bool valid = phase == kFetchPhase && count >= 0 && count <= int{kMostCounted};
  return valid ? Take(device, protocol::kFetch, count, buffer) : kFailure;
}

short Control_Command_Send(int device, int request, int value, int index, int length) {
  const bool valid =
      request >= 0 && request <= 0xFF && IsWord(value) && IsWord(index) && length == 0;
  if (!valid) return kFailure;
  const std::string arguments = protocol::PackNumber(static_cast<std::uint32_t>(request), 1) +
                                protocol::PackNumber(static_cast<std::uint32_t>(value), 2) +
                                protocol::PackNumber(static_cast<std::uint32_t>(index), 2);
  return Ask(device, protocol::kControl, arguments).IsDone() ? kSuccess : kFailure;
}

short Bulk_DataTransfer_Read(int device, int count, unsigned char* address) {
  const bool valid = count > 0 && address;
  return valid ? Take(device, protocol::kBulkRead, count, address) : kFailure;
}

// The instrument has nothing that these two calls could reach.
short Control_Command_Read(int, int, int, int, int, unsigned char*) {
  return kFailure;
}

short Bulk_DataTransfer_Write(int, int, const unsigned char*) {
  return kFailure;
}
}

// The NI-488.2 calls on a bus whose only devices are simulated instruments. Board 0 is the only
// board. It exists if TX5000SIM_SOCKET names any instrument, even one that is not running.

#include <algorithm>
#include <chrono>
#include <iterator>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "simulator/shims/Wire.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using tx5000::Wire;
namespace protocol = tx5000::protocol;

constexpr int kErr = 0x8000;
constexpr int kTimo = 0x4000;
constexpr int kEnd = 0x2000;
constexpr int kCmpl = 0x0100;

enum Error { kEdvr = 0, kEnol = 2, kEarg = 4, kEabo = 6, kEneb = 7, kEcap = 11 };
constexpr long kNoSuchDevice = 0xDEAD37F0L;  // the count after EDVR

constexpr int kFirstHandle = 1024;
constexpr std::size_t kMostHandles = 4096;
constexpr int kHighestAddress = 30;
constexpr int kLowestSecondary = 96;
constexpr int kHighestSecondary = 126;
constexpr int kNobody = -1;

// In ms, by time-out code. Times below a millisecond count as one. 0 means never.
constexpr int kTimeOuts[] = {0,   1,   1,    1,    1,     1,     3,      10,     30,
                             100, 300, 1000, 3000, 10000, 30000, 100000, 300000, 1000000};
constexpr int kTimeOutCodes = static_cast<int>(std::size(kTimeOuts));
constexpr milliseconds kForEver = std::chrono::hours(24 * 365);
// Extra time for the simulator. It keeps the time-outs itself; this one only ends a hang.
constexpr milliseconds kGrace(2000);

struct Status {
  int sta = 0;
  int err = 0;
  int cnt = 0;
  long cntl = 0;
};
struct Globals {
  int* sta = nullptr;
  int* err = nullptr;
  int* cnt = nullptr;
  long* cntl = nullptr;
};
thread_local Status status;
thread_local Globals globals;

int SetStatus(int sta, int err, long count) {
  status = {sta, err, static_cast<int>(count), count};
  if (globals.sta) *globals.sta = status.sta;
  if (globals.err) *globals.err = status.err;
  if (globals.cnt) *globals.cnt = status.cnt;
  if (globals.cntl) *globals.cntl = status.cntl;
  return sta;
}

int Complete(int bits, long count) {
  return SetStatus(kCmpl | bits, 0, count);
}

int Fail(Error error, long count = 0) {
  if (error == kEdvr) return SetStatus(kErr, kEdvr, kNoSuchDevice);
  return SetStatus(kErr | kCmpl | (error == kEabo ? kTimo : 0), error, count);
}

struct Device {
  bool online = false;
  int address = kNobody;
  int timeOut = 0;
  bool endWithLastByte = true;
};

class Bus {
 public:
  std::mutex& Lock() { return lock_; }

  // Returns nothing if no handle is left. A handle that went offline is reused as late as possible.
  std::optional<int> Add(const Device& device) {
    for (std::size_t tried = 0; tried < kMostHandles; ++tried) {
      const std::size_t place = next_;
      next_ = (next_ + 1) % kMostHandles;
      if (place >= devices_.size()) devices_.resize(place + 1);
      if (devices_[place].online) continue;
      devices_[place] = device;
      return kFirstHandle + static_cast<int>(place);
    }
    return std::nullopt;
  }

  Device* Find(int handle) {
    const auto place = static_cast<std::size_t>(handle - kFirstHandle);
    const bool known = handle >= kFirstHandle && place < devices_.size();
    return known && devices_[place].online ? &devices_[place] : nullptr;
  }

  // Returns null if no instrument listens. All handles of an address share one connection, so
  // unread bytes are still there for the next handle.
  Wire* Reach(const Device& device) {
    if (device.address == kNobody) return nullptr;
    for (const std::string& path : tx5000::SocketPaths()) {
      Wire& wire = wires_[{path, device.address}];
      if (wire.Reach(path, 'g', device.address)) return &wire;
    }
    return nullptr;
  }

 private:
  std::mutex lock_;
  std::vector<Device> devices_;
  std::size_t next_ = 0;
  std::map<std::pair<std::string, int>, Wire> wires_;
};

Bus& TheBus() {
  static Bus bus;
  return bus;
}

milliseconds TimeOutOf(const Device& device) {
  const int time = kTimeOuts[device.timeOut];
  return time > 0 ? milliseconds(time) : kForEver;
}

int Write(const Device& device, std::string_view bytes) {
  Wire* wire = TheBus().Reach(device);
  if (!wire) return Fail(kEnol);
  long written = 0;
  while (!bytes.empty()) {
    const std::string_view piece = bytes.substr(0, protocol::kMostBytes);
    bytes.remove_prefix(piece.size());
    const bool end = bytes.empty() && device.endWithLastByte;
    const auto answer = wire->Ask(protocol::kWrite, (end ? '\1' : '\0') + std::string(piece),
                                  TimeOutOf(device) + kGrace);
    if (answer.delivery == Wire::Delivery::kLate) return Fail(kEabo, written);
    if (!answer.IsDone()) return Fail(kEnol, written);
    written += static_cast<long>(piece.size());
  }
  return Complete(0, written);
}

// A controller cannot distinguish a slow talker from a missing one, so the time-out passes in full.
int WaitInVain(const Device& device, steady_clock::time_point deadline, long count) {
  if (kTimeOuts[device.timeOut] > 0) std::this_thread::sleep_until(deadline);
  return Fail(kEabo, count);
}

int Read(const Device& device, char* buffer, long count) {
  const auto deadline = steady_clock::now() + TimeOutOf(device);
  long received = 0;
  while (received < count) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    const bool limited = kTimeOuts[device.timeOut] > 0;
    const auto time = limited ? static_cast<std::uint32_t>(std::max<long>(1, left.count())) : 0;
    const auto wanted = std::min<long>(count - received, protocol::kMostBytes);
    Wire* wire = TheBus().Reach(device);
    if (!wire) return WaitInVain(device, deadline, received);
    const auto answer = wire->Ask(
        protocol::kRead,
        protocol::PackNumber(static_cast<std::uint32_t>(wanted), 4) + protocol::PackNumber(time, 4),
        left + kGrace);
    const bool sound = answer.delivery == Wire::Delivery::kAnswered && !answer.result.empty() &&
                       static_cast<long>(answer.result.size()) <= wanted + 1;
    if (!sound) return WaitInVain(device, deadline, received);
    answer.result.copy(buffer + received, answer.result.size() - 1, 1);
    received += static_cast<long>(answer.result.size()) - 1;
    if (answer.outcome != protocol::kDone) return Fail(kEabo, received);
    if (answer.result[0] != 0) return Complete(kEnd, received);
  }
  return Complete(0, received);
}

int Clear(const Device& device) {
  // A clear goes to the bus, and no device has to answer it.
  Wire* wire = TheBus().Reach(device);
  const bool late = wire && wire->Ask(protocol::kClear, {}, TimeOutOf(device) + kGrace).delivery ==
                                Wire::Delivery::kLate;
  return late ? Fail(kEabo) : Complete(0, 0);
}

// Runs a call on an online device while the bus is locked.
template <typename Call>
int WithDevice(int handle, Call call) {
  const std::lock_guard guard(TheBus().Lock());
  Device* device = TheBus().Find(handle);
  return device ? call(*device) : Fail(kEdvr);
}

bool IsSecondary(int address) {
  return address == 0 || (address >= kLowestSecondary && address <= kHighestSecondary);
}

}  // namespace

extern "C" {

int ibdev(int board, int pad, int sad, int tmo, int eot, int eos) {
  const std::lock_guard guard(TheBus().Lock());
  const bool valid = pad >= 0 && pad <= kHighestAddress && IsSecondary(sad) && tmo >= 0 &&
                     tmo < kTimeOutCodes && (eot == 0 || eot == 1);
  std::optional<int> handle;
  if (board != 0 || tx5000::SocketPaths().empty()) {
    Fail(kEneb);
  } else if (!valid) {
    Fail(kEarg);
  } else if (eos != 0) {
    Fail(kEcap);  // this board knows no end-of-string character
  } else if (handle = TheBus().Add({true, sad == 0 ? pad : kNobody, tmo, eot == 1}); !handle) {
    Fail(kEdvr);
  } else {
    Complete(0, 0);
  }
  return handle.value_or(-1);
}

int ibclr(int ud) {
  return WithDevice(ud, [](Device& device) { return Clear(device); });
}

int ibwrt(int ud, const void* data, long count) {
  return WithDevice(ud, [&](Device& device) {
    if (count < 0 || (!data && count > 0)) return Fail(kEarg);
    if (count == 0) return Complete(0, 0);
    return Write(device, {static_cast<const char*>(data), static_cast<std::size_t>(count)});
  });
}

int ibrd(int ud, void* buffer, long count) {
  return WithDevice(ud, [&](Device& device) {
    if (count < 0 || (!buffer && count > 0)) return Fail(kEarg);
    return Read(device, static_cast<char*>(buffer), count);
  });
}

int ibonl(int ud, int v) {
  return WithDevice(ud, [&](Device& device) {
    device.online = v != 0;
    return Complete(0, 0);
  });
}

int ThreadIbsta() {
  return status.sta;
}
int ThreadIberr() {
  return status.err;
}
int ThreadIbcnt() {
  return status.cnt;
}
long ThreadIbcntl() {
  return status.cntl;
}

// Returns 0 if bound now, 1 if this thread was bound already, 2 for a null pointer.
int RegisterGpibGlobalsForThread(int* sta, int* err, int* cnt, long* cntl) {
  if (globals.sta) return 1;
  if (!sta || !err || !cnt || !cntl) return 2;
  globals = {sta, err, cnt, cntl};
  return 0;
}

int UnregisterGpibGlobalsForThread() {
  globals = {};
  return 0;
}
}

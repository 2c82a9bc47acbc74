#include "drivers/LibraryGpib.h"

#include <algorithm>
#include <filesystem>

#include "drivers/DeviceRights.h"

namespace oriolemark {
namespace {

using OpenCall = int(int, int, int, int, int, int);
using ClearCall = int(int);
using WriteCall = int(int, const void*, long);
using ReadCall = int(int, void*, long);
using OnlineCall = int(int, int);
using RegisterCall = int(int*, int*, int*, long*);
using UnregisterCall = int();
using WordCall = int();
using LongWordCall = long();

constexpr const char* kRegister = "RegisterGpibGlobalsForThread";
constexpr int kRegistered = 0;
constexpr int kRegisteredBefore = 1;
constexpr int kFirstRefusal = 2;
constexpr int kLastRefusal = 3;
constexpr long kNotBoundCount = 0xDEAD37F0;

// The board's device under the system's usual driver.
constexpr const char* kBoard = "/dev/gpib0";

struct Fault {
  int iberr;
  const char* words;
};

constexpr Fault kFaults[] = {
    {2, "No instrument responds on the bus. Check its power, its cable and its address."},
    {4, "The library refuses the address. Choose one from 0 to 30."},
    {6, "The instrument did not answer in time. Check its power, its cable and its address."},
};

const std::vector<std::string>& UsualNames() {
  static const std::vector<std::string> names{"libgpib.so.0", "libni4882.so", "libgpibapi.so"};
  return names;
}

// The counts are not required, because nothing uses them.
const Exports& RequiredExports() {
  static const Exports required{{"ibdev"},
                                {"ibclr"},
                                {"ibwrt"},
                                {"ibrd"},
                                {"ibonl"},
                                {"ThreadIbsta", "ibsta", kRegister},
                                {"ThreadIberr", "iberr", kRegister}};
  return required;
}

// One status word: from its function, else from its variable, else 0.
template <typename Word>
int ReadWord(const SharedLibrary& library, const char* function, const char* variable) {
  if (auto* const call = library.Find<Word()>(function)) return static_cast<int>(call());
  const auto* const word = library.Find<Word>(variable);
  return word != nullptr ? static_cast<int>(*word) : 0;
}

}  // namespace

// The library must not write to status words that have been destroyed.
LibraryGpib::~LibraryGpib() {
  if (bound_) Unbind();
}

int LibraryGpib::ibdev(int board, int primary, int secondary, int timeout, int eot, int eos) {
  opened_ = Load();
  const int device = Call<OpenCall>("ibdev", board, primary, secondary, timeout, eot, eos);
  opened_ = opened_ && (status_.ibsta & kGpibErr) == 0;
  return device;
}

void LibraryGpib::ibclr(int device) {
  Call<ClearCall>("ibclr", device);
}

void LibraryGpib::ibwrt(int device, std::string_view bytes) {
  if (bytes.empty()) return;
  const void* const start = bytes.data();
  Call<WriteCall>("ibwrt", device, start, static_cast<long>(bytes.size()));
}

void LibraryGpib::ibrd(int device, std::span<char> buffer) {
  void* const start = buffer.data();
  Call<ReadCall>("ibrd", device, start, static_cast<long>(buffer.size()));
}

void LibraryGpib::ibonl(int device, int online) {
  Call<OnlineCall>("ibonl", device, online);
}

std::string LibraryGpib::Meaning() {
  const std::vector<std::string> names = AskedNames();
  const bool standing = library_.IsOpen() && names == names_;
  const SharedLibrary found = standing ? SharedLibrary() : SharedLibrary(names, RequiredExports());
  const SharedLibrary& library = standing ? library_ : found;
  if (library.IsOpen()) {
    const std::string failure = standing ? Problem() : "";
    return "GPIB library: " + library.Name() +
           (failure.empty() ? "" : ". Last failure: " + failure);
  }
  return "No usable GPIB library was found. Tried: " + library.Reason() +
         ". To use another one, name it in the options.";
}

std::string LibraryGpib::Problem() {
  if ((status_.ibsta & kGpibErr) == 0) return {};
  if (!library_.IsOpen()) return Meaning();
  const auto* const fault =
      std::find_if(std::begin(kFaults), std::end(kFaults),
                   [this](const Fault& row) { return row.iberr == status_.iberr; });
  if (fault != std::end(kFaults)) return fault->words;
  constexpr int kNoSuchBoard[] = {0, 1, 7};
  if (opened_ || std::ranges::find(kNoSuchBoard, status_.iberr) == std::end(kNoSuchBoard))
    return {};
  std::error_code error;
  if (std::filesystem::exists(kBoard, error) && !MayUse(kBoard)) {
    return std::string("You do not have permission to use ") + kBoard + ". " +
           JoinGroup(GroupOf(kBoard, "gpib"));
  }
  return "The library " + library_.Name() + " found no board 0. Set the board up with its driver.";
}

std::vector<std::string> LibraryGpib::AskedNames() const {
  const std::string name = store_.Read("Drivers", "GpibLibrary").value_or("");
  return name.empty() ? UsualNames() : std::vector<std::string>{name};
}

bool LibraryGpib::Load() {
  std::vector<std::string> names = AskedNames();
  if (library_.IsOpen() && names == names_) return true;
  if (bound_) Unbind();
  names_ = std::move(names);
  library_ = SharedLibrary(names_, RequiredExports());
  return library_.IsOpen();
}

template <typename Function, typename... Arguments>
int LibraryGpib::Call(const char* name, Arguments... arguments) {
  if (!opened_) {
    status_ = {.ibsta = kGpibErr};
    return -1;
  }
  if (!bound_) Bind();
  const int result = library_.Find<Function>(name)(arguments...);
  CopyStatus();
  return result;
}

// Only one vendor's library has this function. If it refuses, the GPIB call is still made. The
// outcome is unknown then, and counts as an error.
void LibraryGpib::Bind() {
  auto* const registerWords = library_.Find<RegisterCall>(kRegister);
  if (registerWords == nullptr) return;
  const auto tryOnce = [this, registerWords] {
    return registerWords(&words_.ibsta, &words_.iberr, &words_.ibcnt, &words_.ibcntl);
  };
  const int result = tryOnce();
  bound_ = result == kRegistered || result == kRegisteredBefore;
  if (result == kRegisteredBefore) {
    Unbind();
    tryOnce();
    bound_ = true;
  }
  if (bound_) return;
  if (result >= kFirstRefusal && result <= kLastRefusal) Unbind();
  words_.ibsta = kGpibErr;
  words_.iberr = 0;
  words_.ibcntl = kNotBoundCount;
}

void LibraryGpib::Unbind() {
  bound_ = false;
  auto* const unregister = library_.Find<UnregisterCall>("UnregisterGpibGlobalsForThread");
  if (unregister != nullptr) unregister();
}

void LibraryGpib::CopyStatus() {
  if (library_.Find<RegisterCall>(kRegister) != nullptr) {
    status_ = {words_.ibsta, words_.iberr, words_.ibcnt, static_cast<int>(words_.ibcntl)};
  } else {
    status_ = {ReadWord<int>(library_, "ThreadIbsta", "ibsta"),
               ReadWord<int>(library_, "ThreadIberr", "iberr"),
               ReadWord<int>(library_, "ThreadIbcnt", "ibcnt"),
               ReadWord<long>(library_, "ThreadIbcntl", "ibcntl")};
  }
  // Some libraries set private flags above the published bits.
  status_.ibsta &= 0xFFFF;
}

}  // namespace oriolemark

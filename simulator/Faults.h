#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tx5000 {

// A reply before it is sent.
struct Reply {
  std::string bytes;  // with its line end
  std::chrono::milliseconds delay{0};
  bool portVanishes = false;
  bool nothingMore = false;  // the line is dead after this reply
};

struct FaultRow {
  std::string_view name;
  std::string_view effect;  // one line of text for the user
  void (*apply)(Reply&, std::chrono::milliseconds argument);
};

// All faults that can be set, by name.
std::span<const FaultRow> FaultTable();

enum class FaultScope { kNext, kAll, kCommand };

struct Fault {
  const FaultRow* row = nullptr;
  FaultScope scope = FaultScope::kAll;
  std::string command;  // for kCommand: the command whose replies are hit
  std::chrono::milliseconds argument{500};
};

// Reads "silence", "delay 1500", "cut next", "garbage for :DATA:CHANNEL1", "delay 80 for *IDN?".
// Without a scope all replies are hit. Returns nothing for a text that is not understood.
std::optional<Fault> ParseFault(std::string_view text);

// The faults that are set. Those that fit a reply are applied in the order in which they were
// added.
class Faults {
 public:
  void Add(Fault fault) { faults_.push_back(std::move(fault)); }
  void Clear();
  bool Empty() const { return faults_.empty() && !dead_; }

  // Applies the faults to the reply to `command`. A fault for the next reply is then used up.
  void Apply(std::string_view command, Reply& reply);

 private:
  std::vector<Fault> faults_;
  bool dead_ = false;
};

}  // namespace tx5000

#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tx5000 {

// A reply on its way to the line.
struct Reply {
  std::string bytes;  // with its line end
  std::chrono::milliseconds delay{0};
  bool portVanishes = false;
  bool nothingMore = false;  // the line is dead behind this reply
};

struct FaultRow {
  std::string_view name;
  std::string_view effect;  // a line for people
  void (*apply)(Reply&, std::chrono::milliseconds argument);
};

// All that can go wrong, by name.
std::span<const FaultRow> FaultTable();

enum class FaultScope { kNext, kAll, kCommand };

struct Fault {
  const FaultRow* row = nullptr;
  FaultScope scope = FaultScope::kAll;
  std::string command;  // for kCommand: the one whose replies it hits
  std::chrono::milliseconds argument{500};
};

// "silence", "delay 1500", "cut next", "garbage for :DATA:CHANNEL1", "delay 80 for *IDN?". Without
// a scope all replies are hit. Nothing for a text that is not understood.
std::optional<Fault> ParseFault(std::string_view text);

// The faults in force. Those that fit a reply are applied in the order in which they were added.
class Faults {
 public:
  void Add(Fault fault) { faults_.push_back(std::move(fault)); }
  void Clear();
  bool Empty() const { return faults_.empty() && !dead_; }

  // Spoils the reply to `command`. A fault for the next reply is used up by it.
  void Apply(std::string_view command, Reply& reply);

 private:
  std::vector<Fault> faults_;
  bool dead_ = false;
};

}  // namespace tx5000

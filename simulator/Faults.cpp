#include "simulator/Faults.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "simulator/Values.h"

namespace tx5000 {
namespace {

using std::chrono::milliseconds;

bool IsBlock(const Reply& reply) {
  return reply.bytes.starts_with("0x");
}

// Puts a byte behind each third of the text. The line end is not counted.
void Sprinkle(Reply& reply, char byte) {
  std::string spoilt;
  for (std::size_t i = 0; i < reply.bytes.size(); ++i) {
    if (i > 0 && i % 3 == 0) spoilt += byte;
    spoilt += reply.bytes[i];
  }
  reply.bytes = std::move(spoilt);
}

// Writes each token of a block again: prefix, its two digits, separator.
void Rewrite(Reply& reply, std::string_view prefix, std::string_view separator) {
  if (!IsBlock(reply)) return;
  std::string spoilt;
  for (std::size_t i = 0; i + 4 < reply.bytes.size(); i += 5) {
    spoilt.append(prefix).append(reply.bytes, i + 2, 2).append(separator);
  }
  reply.bytes = spoilt + "\n";
}

void KeepHalf(Reply& reply) {
  reply.bytes.resize(reply.bytes.size() / 2);
}

void LowerDigits(Reply& reply, milliseconds) {
  if (!IsBlock(reply)) return;
  for (char& c : reply.bytes) {
    if (c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
  }
}

void Garble(Reply& reply, milliseconds) {
  unsigned state = 12345;
  for (char& c : reply.bytes) {
    state = state * 1103515245u + 12345u;
    if (c != '\n') c = static_cast<char>('!' + state / 65536 % 94);
  }
}

void ShortenBlock(Reply& reply, milliseconds) {
  if (!IsBlock(reply)) return;
  reply.bytes.resize(reply.bytes.size() / 10 * 5);
  reply.bytes += '\n';
}

void LengthenBlock(Reply& reply, milliseconds) {
  constexpr int kSurplus = 500;
  if (!IsBlock(reply)) return;
  reply.bytes.pop_back();
  for (int i = 0; i < kSurplus; ++i) reply.bytes += "0x7D ";
  reply.bytes += '\n';
}

void PartUnit(Reply& reply, milliseconds) {
  const auto digit = reply.bytes.find_last_of("0123456789");
  if (!IsBlock(reply) && digit != std::string::npos) reply.bytes.insert(digit + 1, 1, ' ');
}

// Splits the reply to a measure query behind its name and rewrites it. The name ends at the sign,
// or at the blank in front of asterisks.
void SpoilMeasure(Reply& reply,
                  std::string (*spoil)(const std::string& name, const std::string& value)) {
  const auto sign = std::min(reply.bytes.find_first_of("=<>"), reply.bytes.find(" ****"));
  if (IsBlock(reply) || sign == std::string::npos) return;
  const auto end = std::min(reply.bytes.find('\n', sign), reply.bytes.size());
  const std::string value = reply.bytes.substr(sign + 1, end - sign - 1);
  reply.bytes.replace(0, end, spoil(reply.bytes.substr(0, sign), value));
}

constexpr std::size_t kMostDoubled = std::size_t{1} << 20;

constexpr FaultRow kTable[] = {
    {"silence", "no reply at all", [](Reply& r, milliseconds) { r.bytes.clear(); }},
    {"delay", "the reply comes late: by the number that follows, in ms (500)",
     [](Reply& r, milliseconds argument) { r.delay += argument; }},
    {"cut", "half of the line is lost, its end stays",
     [](Reply& r, milliseconds) {
       KeepHalf(r);
       r.bytes += '\n';
     }},
    {"double", "the line comes twice",
     [](Reply& r, milliseconds) {
       // Repeated doubling stops at this size.
       if (r.bytes.size() < kMostDoubled) r.bytes += r.bytes;
     }},
    {"garbage", "a line of the same length with other characters", Garble},
    {"no-lf", "the line end is missing", [](Reply& r, milliseconds) { std::erase(r.bytes, '\n'); }},
    {"die", "the line dies in the middle of the reply and stays dead until \"clear\"",
     [](Reply& r, milliseconds) {
       KeepHalf(r);
       r.nothingMore = true;
     }},
    {"vanish", "the port goes away, as when its plug is pulled",
     [](Reply& r, milliseconds) {
       r.bytes.clear();
       r.portVanishes = true;
     }},
    {"nul", "NUL bytes in the line", [](Reply& r, milliseconds) { Sprinkle(r, '\0'); }},
    {"high", "bytes above 127 in the line", [](Reply& r, milliseconds) { Sprinkle(r, '\xE4'); }},
    {"blanks", "a blank between number and unit, as in \"1.00 V\"", PartUnit},
    {"bare-tokens", "samples as \"7D \"", [](Reply& r, milliseconds) { Rewrite(r, "", " "); }},
    {"wide-tokens", "samples as \"0x007D \"",
     [](Reply& r, milliseconds) { Rewrite(r, "0x00", " "); }},
    {"comma-tokens", "samples as \"0x7D,\"", [](Reply& r, milliseconds) { Rewrite(r, "0x", ","); }},
    {"two-blanks", "samples with two blanks between them",
     [](Reply& r, milliseconds) { Rewrite(r, "0x", "  "); }},
    {"lower-tokens", "samples as \"0x7d \"", LowerDigits},
    {"no-last-blank", "no blank behind the last sample",
     [](Reply& r, milliseconds) {
       if (r.bytes.ends_with(" \n")) r.bytes.erase(r.bytes.size() - 2, 1);
     }},
    {"equal-stars", "measures that fail as \"Vpp=****\"",
     [](Reply& r, milliseconds) {
       SpoilMeasure(r, [](auto& name, auto&) { return name + "=****"; });
     }},
    {"no-value", "measures as \"Vpp=\"",
     [](Reply& r, milliseconds) { SpoilMeasure(r, [](auto& name, auto&) { return name + "="; }); }},
    {"no-name", "measures as \"1.200V\"",
     [](Reply& r, milliseconds) { SpoilMeasure(r, [](auto&, auto& value) { return value; }); }},
    {"empty", "a line without text", [](Reply& r, milliseconds) { r.bytes = "\n"; }},
    {"short-block", "half of the samples", ShortenBlock},
    {"long-block", "500 samples too many", LengthenBlock},
};

std::string_view TakeWord(std::string_view& text) {
  const auto end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return word;
}

// Reads the scope, which follows the name and the number.
bool ParseScope(std::string_view text, Fault& fault) {
  if (text.empty() || text == "all") return true;
  if (text == "next") {
    fault.scope = FaultScope::kNext;
    return true;
  }
  fault.scope = FaultScope::kCommand;
  fault.command = text.substr(std::min<std::size_t>(4, text.size()));
  return text.starts_with("for ") && !fault.command.empty();
}

}  // namespace

std::span<const FaultRow> FaultTable() {
  return kTable;
}

std::optional<Fault> ParseFault(std::string_view text) {
  const std::string_view name = TakeWord(text);
  const auto row = std::find_if(std::begin(kTable), std::end(kTable),
                                [&](const FaultRow& r) { return r.name == name; });
  if (row == std::end(kTable)) return std::nullopt;
  Fault fault;
  fault.row = row;
  std::string_view rest = text;
  if (const auto number = ParseCount(TakeWord(rest))) {
    fault.argument = milliseconds(*number);
    text = rest;
  }
  return ParseScope(text, fault) ? std::optional(fault) : std::nullopt;
}

void Faults::Clear() {
  faults_.clear();
  dead_ = false;
}

void Faults::Apply(std::string_view command, Reply& reply) {
  for (const Fault& fault : faults_) {
    if (fault.scope == FaultScope::kCommand && fault.command != command) continue;
    fault.row->apply(reply, fault.argument);
  }
  std::erase_if(faults_, [](const Fault& fault) { return fault.scope == FaultScope::kNext; });
  if (dead_) reply.bytes.clear();
  dead_ = dead_ || reply.nothingMore;
}

}  // namespace tx5000

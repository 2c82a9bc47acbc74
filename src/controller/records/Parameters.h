#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "controller/records/CtrlSettings.h"

namespace oriolemark {

// A setting's place in the record.
using Field = std::string CtrlSettings::*;

// How the values that are offered for a setting come about.
enum class ValueKind {
  List,        // a fixed list
  TimeDiv,     // a fixed list, the time bases
  VoltDiv,     // the ranges of the channel's probe
  Division,    // 12 to -12 divisions
  Source,      // a fixed list whose last row counts for edges alone
  LineNumber,  // the lines of the video standard
  Percent,     // 1 % to 100 %
  Time,        // a number entered as a time
  Query        // can only be read
};

// How a reply becomes the setting's text.
enum class ReplyRule {
  AsItComes,
  NoBlanks,
  RunState  // "STOP", or else "RUN"
};

// The shapes that the Trigger group of the tree takes by the trigger's method.
enum class TriggerShape { Edge, Pulse, Video, Other };
inline constexpr std::size_t kShapes = 4;
TriggerShape ShapeOf(std::string_view trigMethod);

// The groups of the tree. Group 0 stays empty.
namespace ctrl_group {
inline constexpr int kRunningControl = 1;
inline constexpr int kCH1 = 2;
inline constexpr int kCH2 = 3;
inline constexpr int kTimeBase = 4;
inline constexpr int kTrigger = 5;
inline constexpr int kAcquire = 6;
inline constexpr int kDisplay = 7;
inline constexpr int kCount = 8;
}  // namespace ctrl_group

inline constexpr std::array<const char*, ctrl_group::kCount> kGroupLabels = {
    "", "Running Control", "CH1", "CH2", "Time Base", "Trigger", "Acquire", "Display"};

// One setting of the instrument: how the record, the tree, the edit dialog and the wire know it.
struct Parameter {
  Field field;
  int group;
  const char* label;
  // The two keywords of its path; empty for the run state, whose values are commands themselves.
  const char* root;
  const char* leaf;
  ValueKind kind;
  std::span<const char* const> values;  // of the kinds with a fixed list
  // Place of its node in the group by shape; 0 where it has none.
  std::array<int, kShapes> positions;
  ReplyRule reply = ReplyRule::AsItComes;

  int PositionIn(TriggerShape shape) const { return positions[static_cast<std::size_t>(shape)]; }
  // Where its node is written to in this shape, 0 for nowhere. A setting that only one shape shows
  // is written to that place in every shape.
  int RepairPosition(TriggerShape shape) const;

  // The command that sets it to a value, and the one that asks for it. A value ends at a CR: to the
  // instrument, what follows would be another command.
  std::string Setting(std::string_view value) const;
  std::string Question() const;
  // The text that it takes from a reply.
  std::string FromReply(std::string_view reply) const;
  // The key of the edit dialog: group and label without a blank between them, but for the run
  // state, whose key is its label.
  std::string Key() const;
};

// Every setting but the memory offset, which the instrument is never told or asked, in the order of
// the record.
std::span<const Parameter> Parameters();

// The setting of a field; every field but the memory offset has one.
const Parameter& ParameterOf(Field field);
// Null where there is none.
const Parameter* FindParameter(std::string_view group, std::string_view label);
const Parameter* FindParameterByKey(std::string_view key);

// The settings of a channel by the group of its tree.
inline constexpr Field ProbeOf(int group) {
  return group == ctrl_group::kCH1 ? &CtrlSettings::CH1Probe : &CtrlSettings::CH2Probe;
}
inline constexpr Field VoltDivOf(int group) {
  return group == ctrl_group::kCH1 ? &CtrlSettings::CH1VoltDiv : &CtrlSettings::CH2VoltDiv;
}

// The ranges of a probe; none for an unknown one.
std::span<const char* const> VoltDivs(std::string_view probe);

}  // namespace oriolemark

#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "controller/records/CtrlSettings.h"

namespace oriolemark {

// The field of a setting in the record.
using Field = std::string CtrlSettings::*;

// Where the values come from that the edit dialog offers.
enum class ValueKind {
  List,        // a fixed list
  TimeDiv,     // a fixed list, the time bases
  VoltDiv,     // the ranges of the channel's probe
  Division,    // 12 to -12 divisions
  Source,      // a fixed list; the last row is for edge trigger only
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

// The shapes of the tree's Trigger group, chosen by the trigger method.
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

// One setting of the instrument: its field, its node, its edit and its words on the wire.
struct Parameter {
  Field field;
  int group;
  const char* label;
  // The two keywords of its path. Empty for the run state, whose values are commands themselves.
  const char* root;
  const char* leaf;
  ValueKind kind;
  std::span<const char* const> values;  // of the kinds with a fixed list
  // Position of its node in the group, for each shape; 0 if the shape has no such node.
  std::array<int, kShapes> positions;
  ReplyRule reply = ReplyRule::AsItComes;

  int PositionIn(TriggerShape shape) const { return positions[static_cast<std::size_t>(shape)]; }
  // The position at which a changed text is written in this shape, 0 for nowhere. A setting of one
  // shape only is always written at that shape's position, even over another node. On purpose.
  int RepairPosition(TriggerShape shape) const;

  // The command that sets it to a value, and the query for it. A value is cut at a CR, because the
  // instrument would take the rest as another command.
  std::string Setting(std::string_view value) const;
  std::string Question() const;
  // The setting's text, taken from a reply.
  std::string FromReply(std::string_view reply) const;
  // The key of the edit dialog: group and label joined without a blank. The run state's key is its
  // label alone.
  std::string Key() const;
};

// Every setting except the memory offset, in the order of the record. The program never sends or
// asks for the memory offset.
std::span<const Parameter> Parameters();

// The setting of a field. Every field except the memory offset has one.
const Parameter& ParameterOf(Field field);
// Null if there is none.
const Parameter* FindParameter(std::string_view group, std::string_view label);
const Parameter* FindParameterByKey(std::string_view key);

// The fields of a channel, by the channel's group in the tree.
inline constexpr Field ProbeOf(int group) {
  return group == ctrl_group::kCH1 ? &CtrlSettings::CH1Probe : &CtrlSettings::CH2Probe;
}
inline constexpr Field VoltDivOf(int group) {
  return group == ctrl_group::kCH1 ? &CtrlSettings::CH1VoltDiv : &CtrlSettings::CH2VoltDiv;
}

// The ranges of a probe. Empty for an unknown probe.
std::span<const char* const> VoltDivs(std::string_view probe);

}  // namespace oriolemark

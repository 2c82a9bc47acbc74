#include "controller/records/Parameters.h"

#include <algorithm>

#include "link/StringRES.h"
#include "link/TX5000Cmd.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

// A keyword without its colon, as the record and the dialog hold it.
constexpr const char* Value(const char* keyword) {
  return keyword + 1;
}

constexpr const char* kRunStates[] = {Value(kRun), Value(kStop)};
constexpr const char* kOnOff[] = {Value(kOn), Value(kOff)};
constexpr const char* kChannelCouplings[] = {Value(kDC), Value(kAC)};
constexpr const char* kProbes[] = {Value(k1X), Value(k10X), Value(k100X), Value(k1000X)};
constexpr const char* kFormats[] = {Value(kYT), Value(kXY)};
constexpr const char* kMethods[] = {Value(kEdge), Value(kPulse), Value(kVideo)};
constexpr const char* kSlopes[] = {Value(kRising), Value(kFalling)};
constexpr const char* kSources[] = {Value(kCH1), Value(kCH2), Value(kExt), Value(kExt5),
                                    Value(kAC)};
constexpr const char* kTrigModes[] = {Value(kAuto), Value(kNormal), Value(kSingle)};
constexpr const char* kTrigCouplings[] = {Value(kDC), Value(kAC), Value(kHF), Value(kLF)};
constexpr const char* kPulseModes[] = {Value(kPlusLessThan),  Value(kPlusMoreThan),
                                       Value(kPlusEqual),     Value(kMinusLessThan),
                                       Value(kMinusMoreThan), Value(kMinusEqual)};
constexpr const char* kPolarities[] = {Value(kNegative), Value(kPositive)};
constexpr const char* kSyncs[] = {Value(kAllLine), Value(kLineNumber), Value(kOddField),
                                  Value(kEvenField)};
constexpr const char* kStandards[] = {Value(kNTSC), Value(kPalSecam)};
constexpr const char* kSamplings[] = {Value(kEquTime), Value(kRealTime)};
constexpr const char* kAcquisitions[] = {Value(kNormal), Value(kEnvelope), Value(kAverage),
                                         Value(kAnalog)};
constexpr const char* kAverageCounts[] = {"2", "4", "8", "16", "32", "64", "128", "256"};
constexpr const char* kTypes[] = {Value(kVect), Value(kDot)};
constexpr const char* kGrids[] = {Value(kFull), Value(kHalf), Value(kNone)};

constexpr const char* kTimeDivs[] = {
    "1.000ns", "2.000ns", "5.000ns", "10.00ns", "20.00ns", "50.00ns", "100.0ns",
    "200.0ns", "500.0ns", "1.000us", "2.000us", "5.000us", "10.00us", "20.00us",
    "50.00us", "100.0us", "200.0us", "500.0us", "1.000ms", "2.000ms", "5.000ms",
    "10.00ms", "20.00ms", "50.00ms", "100.0ms", "200.0ms", "500.0ms", "1.000s",
    "2.000s",  "5.000s",  "10.00s",  "20.00s",  "50.00s"};

constexpr const char* kVoltDivs1X[] = {"2.00mV", "5.00mV", "10.0mV", "20.0mV", "50.0mV", "100mV",
                                       "200mV",  "500mV",  "1.00V",  "2.00V",  "5.00V"};
constexpr const char* kVoltDivs10X[] = {"20.0mV", "50.0mV", "100mV", "200mV", "500mV", "1.00V",
                                        "2.00V",  "5.00V",  "10.0V", "20.0V", "50.0V"};
constexpr const char* kVoltDivs100X[] = {"200mV", "500mV", "1.00V", "2.00V", "5.00V", "10.0V",
                                         "20.0V", "50.0V", "100V",  "200V",  "500V"};
constexpr const char* kVoltDivs1000X[] = {"2.00V", "5.00V", "10.0V", "20.0V", "50.0V", "100V",
                                          "200V",  "500V",  "1kV",   "2kV",   "5kV"};

using Positions = std::array<int, kShapes>;

constexpr Positions Always(int position) {
  return {position, position, position, position};
}
constexpr Positions Never() {
  return Always(0);
}
// The positions in the Trigger group under EDGE, PULSE, VIDEO and any other method.
constexpr Positions ByShape(int edge, int pulse, int video, int other) {
  return {edge, pulse, video, other};
}

constexpr std::span<const char* const> kNoList{};

namespace group = ctrl_group;
using S = CtrlSettings;
using enum ValueKind;
using enum ReplyRule;

constexpr Parameter kParameters[] = {
    {&S::RunStop, group::kRunningControl, "Run|Stop", "", "", List, kRunStates, Always(1),
     RunState},
    {&S::CH1Display, group::kCH1, "Display", kChannel1, kDisplay, List, kOnOff, Always(1)},
    {&S::CH1VoltDiv, group::kCH1, "Volt/Div", kChannel1, kRange, VoltDiv, kNoList, Always(2),
     NoBlanks},
    {&S::CH1Offset, group::kCH1, "Offset", kChannel1, kOffset, Division, kNoList, Always(3)},
    {&S::CH1Coupling, group::kCH1, "Coupling", kChannel1, kCoupling, List, kChannelCouplings,
     Always(4)},
    {&S::CH1BWLimit, group::kCH1, "BW Limit", kChannel1, kBWLimit, List, kOnOff, Always(5)},
    {&S::CH1Probe, group::kCH1, "Probe", kChannel1, kProbe, List, kProbes, Always(6)},
    {&S::CH1Invert, group::kCH1, "Invert", kChannel1, kInvert, List, kOnOff, Never()},
    {&S::CH2Display, group::kCH2, "Display", kChannel2, kDisplay, List, kOnOff, Always(1)},
    {&S::CH2VoltDiv, group::kCH2, "Volt/Div", kChannel2, kRange, VoltDiv, kNoList, Always(2),
     NoBlanks},
    {&S::CH2Offset, group::kCH2, "Offset", kChannel2, kOffset, Division, kNoList, Always(3)},
    {&S::CH2Coupling, group::kCH2, "Coupling", kChannel2, kCoupling, List, kChannelCouplings,
     Always(4)},
    {&S::CH2BWLimit, group::kCH2, "BW Limit", kChannel2, kBWLimit, List, kOnOff, Always(5)},
    {&S::CH2Probe, group::kCH2, "Probe", kChannel2, kProbe, List, kProbes, Always(6)},
    {&S::CH2Invert, group::kCH2, "Invert", kChannel2, kInvert, List, kOnOff, Never()},
    {&S::TimeDiv, group::kTimeBase, "Time/Div", kTimeBase, kRange, TimeDiv, kTimeDivs, Always(1)},
    {&S::TimeDelay, group::kTimeBase, "Delay", kTimeBase, kTriggerDelay, Time, kNoList, Always(2)},
    {&S::Holdoff, group::kTimeBase, "Holdoff", kTimeBase, kHoldoff, Time, kNoList, Always(3)},
    {&S::MemorySize, group::kTimeBase, "Memory Size", kData, kSysMemSize, Query, kNoList,
     Always(4)},
    {&S::TimeFormat, group::kTimeBase, "Format", kTimeBase, kFormat, List, kFormats, Always(5)},
    {&S::TrigMethod, group::kTrigger, "Method", kTrigger, kMethod, List, kMethods, Always(1)},
    {&S::TrigSlope, group::kTrigger, "Slope", kTrigger, kSlope, List, kSlopes, ByShape(2, 0, 0, 0)},
    {&S::TrigSource, group::kTrigger, "Source", kTrigger, kSource, Source, kSources,
     ByShape(3, 2, 2, 2)},
    {&S::TrigMode, group::kTrigger, "Mode", kTrigger, kMode, List, kTrigModes, ByShape(4, 6, 0, 0)},
    {&S::TrigCoupling, group::kTrigger, "Coupling", kTrigger, kCoupling, List, kTrigCouplings,
     ByShape(5, 5, 0, 0)},
    {&S::PulseMode, group::kTrigger, "Pulse mode", kTrigger, kPulseMode, List, kPulseModes,
     ByShape(0, 3, 0, 0)},
    {&S::PulseWidth, group::kTrigger, "Pulse width", kTrigger, kPulseWidth, Time, kNoList,
     ByShape(0, 4, 0, 0)},
    {&S::VideoPolarity, group::kTrigger, "Polarity", kTrigger, kPolarity, List, kPolarities,
     ByShape(0, 0, 3, 0)},
    {&S::VideoSync, group::kTrigger, "Sync", kTrigger, kSync, List, kSyncs, ByShape(0, 0, 4, 0)},
    {&S::VideoStandard, group::kTrigger, "Video Standard", kTrigger, kVideoStandard, List,
     kStandards, ByShape(0, 0, 6, 0)},
    {&S::LineNumber, group::kTrigger, "Line number", kTrigger, kLineNum, LineNumber, kNoList,
     ByShape(0, 0, 5, 0)},
    {&S::TrigLevel, group::kTrigger, "Level", kTrigger, kLevel, Division, kNoList,
     ByShape(6, 7, 0, 0)},
    {&S::SamplingMode, group::kAcquire, "Sampling Mode", kAcquire, kSampling, List, kSamplings,
     Always(2)},
    {&S::Acquisition, group::kAcquire, "Acquisition", kAcquire, kAcquisition, List, kAcquisitions,
     Always(1)},
    {&S::Averages, group::kAcquire, "Averages", kAcquire, kAverages, List, kAverageCounts,
     Always(4)},
    {&S::Intensity, group::kAcquire, "Intensity", kAcquire, kIntensity, Percent, kNoList, Always(3),
     NoBlanks},
    {&S::AntiAliasing, group::kAcquire, "Anti-aliasing", kAcquire, kAntiAliasing, List, kOnOff,
     Always(5)},
    {&S::DisplayType, group::kDisplay, "Type", kDisplay, kType, List, kTypes, Always(1)},
    {&S::Persist, group::kDisplay, "Persist", kDisplay, kPersist, List, kOnOff, Always(2)},
    {&S::Grid, group::kDisplay, "Grid", kDisplay, kGrid, List, kGrids, Always(3)},
};

std::string Joined(const Parameter& parameter) {
  return std::string(parameter.root) + parameter.leaf;
}

template <typename Match>
const Parameter* FindIf(Match match) {
  const auto* const found = std::find_if(std::begin(kParameters), std::end(kParameters), match);
  return found == std::end(kParameters) ? nullptr : found;
}

}  // namespace

TriggerShape ShapeOf(std::string_view trigMethod) {
  if (trigMethod == DropFirstChar(kEdge)) return TriggerShape::Edge;
  if (trigMethod == DropFirstChar(kPulse)) return TriggerShape::Pulse;
  return trigMethod == DropFirstChar(kVideo) ? TriggerShape::Video : TriggerShape::Other;
}

int Parameter::RepairPosition(TriggerShape shape) const {
  const bool oneShape = std::ranges::count(positions, 0) == kShapes - 1;
  return oneShape ? std::ranges::max(positions) : PositionIn(shape);
}

std::string Parameter::Setting(std::string_view value) const {
  return Joined(*this) + ":" + std::string(value.substr(0, value.find('\r')));
}

std::string Parameter::Question() const {
  const std::string path =
      reply == ReplyRule::RunState ? std::string(kTrigger) + kStatus : Joined(*this);
  return path + kQuery;
}

std::string Parameter::FromReply(std::string_view text) const {
  switch (reply) {
    case ReplyRule::NoBlanks:
      return RemoveSpaces(text);
    case ReplyRule::RunState:
      return DropFirstChar(text == DropFirstChar(kStop) ? kStop : kRun);
    case ReplyRule::AsItComes:
      break;
  }
  return std::string(text);
}

std::string Parameter::Key() const {
  if (field == &CtrlSettings::RunStop) return label;
  return std::string(kGroupLabels[static_cast<std::size_t>(group)]) + label;
}

std::span<const Parameter> Parameters() {
  return kParameters;
}

const Parameter& ParameterOf(Field field) {
  return *FindIf([field](const Parameter& row) { return row.field == field; });
}

const Parameter* FindParameter(std::string_view group, std::string_view label) {
  return FindIf([&](const Parameter& row) {
    return kGroupLabels[static_cast<std::size_t>(row.group)] == group && row.label == label;
  });
}

const Parameter* FindParameterByKey(std::string_view key) {
  return FindIf([key](const Parameter& row) { return row.Key() == key; });
}

std::span<const char* const> VoltDivs(std::string_view probe) {
  constexpr std::span<const char* const> kLists[] = {kVoltDivs1X, kVoltDivs10X, kVoltDivs100X,
                                                     kVoltDivs1000X};
  for (std::size_t i = 0; i < std::size(kProbes); ++i) {
    if (probe == kProbes[i]) return kLists[i];
  }
  return {};
}

}  // namespace oriolemark

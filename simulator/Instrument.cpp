#include "simulator/Instrument.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "simulator/Measures.h"
#include "simulator/Values.h"

namespace tx5000 {

struct Instrument::Command {
  std::string_view text;
  Action action;
};

namespace {

constexpr std::size_t kUnknownKept = 100;
constexpr std::size_t kUnknownLength = 200;

struct Block {
  std::string_view command;
  Channel channel;
  Trace trace;
};

constexpr Block kBlocks[] = {
    {":DATA:CHANNEL1", Channel::k1, Trace::kPlain},
    {":DATA:CHANNEL2", Channel::k2, Trace::kPlain},
    {":DATA:EnvelopeMax:CH1", Channel::k1, Trace::kUpper},
    {":DATA:EnvelopeMin:CH1", Channel::k1, Trace::kLower},
    {":DATA:EnvelopeMax:CH2", Channel::k2, Trace::kUpper},
    {":DATA:EnvelopeMin:CH2", Channel::k2, Trace::kLower},
};

// Writes "0x7D " for each sample, including the last one.
std::string FormatBlock(const std::vector<std::uint8_t>& samples) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  text.reserve(samples.size() * 5);
  for (const std::uint8_t sample : samples) {
    text += "0x";
    text += kDigits[sample >> 4];
    text += kDigits[sample & 15];
    text += ' ';
  }
  return text;
}

double SecondsOf(std::chrono::milliseconds time) {
  return static_cast<double>(time.count()) / 1000.0;
}

}  // namespace

const Instrument::Command* Instrument::FindCommand(std::string_view text) {
  static constexpr Command kCommands[] = {
      {":RUN", &Instrument::Run},
      {":STOP", &Instrument::Stop},
      {":AUTO", &Instrument::AutoSet},
      {":TRIG%50", &Instrument::SetLevelToMiddle},
      {":ForceTrig", &Instrument::ForceTrigger},
      {":HARD_COPY", &Instrument::CopyScreen},
      {":DISPLAY:MENU STATUS:ON", &Instrument::ShowMenu},
      {":DISPLAY:MENU STATUS:OFF", &Instrument::HideMenu},
      {":KEY:LOCK:ENABLE", &Instrument::EnableKeys},
      {":KEY:LOCK:DISABLE", &Instrument::DisableKeys},
      {":MEASURE:CURRENT_SRC:CH1", &Instrument::MeasureChannel1},
      {":MEASURE:CURRENT_SRC:CH2", &Instrument::MeasureChannel2},
  };
  const auto found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                  [&](const Command& c) { return c.text == text; });
  return found == std::end(kCommands) ? nullptr : found;
}

Instrument::Instrument(Identity identity, std::uint32_t seed)
    : identity_(std::move(identity)), screenMemory_(kScreenBytes) {
  inputs_.seed = seed;
  Acquire();
}

std::optional<std::string> Instrument::Execute(std::string_view command) {
  if (command == "*IDN?") {
    return identity_.maker + "," + identity_.model + "," + identity_.serial + "," +
           identity_.firmware;
  }
  if (Do(command)) return std::nullopt;
  std::optional<std::string> reply = AnswerBlock(command);
  if (!reply) reply = AnswerMeasureQuery(command);
  if (!reply && command.ends_with(":?")) {
    reply = AnswerQuery(command.substr(0, command.size() - 2));
  }
  if (!reply && !SetFrom(command)) NoteUnknown(command);
  return reply;
}

bool Instrument::Do(std::string_view command) {
  const Command* known = FindCommand(command);
  if (known) (this->*known->action)();
  if (known) return true;
  constexpr std::string_view kKey = ":KEY:";
  return command.starts_with(kKey) && PressKey(command.substr(kKey.size()));
}

std::optional<std::string> Instrument::AnswerQuery(std::string_view path) {
  if (path == ":TRIGGER:STATUS") return IsRunning() ? "RUN" : "STOP";
  if (path == ":DATA:RollingStartPos") {
    return std::to_string(GapOf(settings_, CurrentRecord()).start);
  }
  if (path == ":DATA:RollingEraseWidth") {
    return std::to_string(GapOf(settings_, CurrentRecord()).width);
  }
  const auto setting = Settings::Find(path);
  return setting ? std::optional(settings_.Text(*setting)) : std::nullopt;
}

std::optional<std::string> Instrument::AnswerBlock(std::string_view command) {
  const auto block = std::find_if(std::begin(kBlocks), std::end(kBlocks),
                                  [&](const Block& b) { return b.command == command; });
  if (block == std::end(kBlocks)) return std::nullopt;
  const Record& record = CurrentRecord();
  return FormatBlock(TakeSamples(settings_, recorded_, record, block->channel, block->trace));
}

std::optional<std::string> Instrument::AnswerMeasureQuery(std::string_view command) {
  if (!command.starts_with(":MEASURE:")) return std::nullopt;
  const Record& record = CurrentRecord();
  return AnswerMeasure(command, settings_, recorded_, record, panel_.ChannelOf(Option::kMeasured));
}

bool Instrument::SetFrom(std::string_view command) {
  // No value contains a colon, so the last colon separates path and value.
  const auto colon = command.rfind(':');
  if (colon == std::string_view::npos) return false;
  const auto setting = Settings::Find(command.substr(0, colon));
  if (!setting) return false;
  IsRunning();  // a shot that is due still uses the old setting
  if (!settings_.Set(*setting, command.substr(colon + 1), Turner::kWire)) return false;
  AfterChange(*setting);
  return true;
}

bool Instrument::Turn(std::string_view path, std::string_view value) {
  if (value.empty()) return Do(path);
  IsRunning();
  if (path == "SIGNAL1" || path == "SIGNAL2") {
    const int number = path.back() - '0';
    const auto signal = ParseSignal(value, number);
    if (signal) Connect(number == 1 ? Channel::k1 : Channel::k2, *signal);
    return signal.has_value();
  }
  const auto setting = Settings::Find(path);
  if (!setting || !settings_.Set(*setting, value, Turner::kHand)) return false;
  AfterChange(*setting);
  return true;
}

void Instrument::AfterChange(Setting setting) {
  // A running instrument that is set to single mode waits for its shot from now on.
  if (setting == Setting::kTrigMode) startedAt_ = now_;
}

void Instrument::Connect(Channel channel, Signal signal) {
  CurrentRecord();
  inputs_.signals[channel == Channel::k1 ? 0 : 1] = signal;
}

void Instrument::NoteUnknown(std::string_view command) {
  ++unknownCount_;
  if (unknown_.size() < kUnknownKept) unknown_.emplace_back(command.substr(0, kUnknownLength));
}

void Instrument::ForgetUnknown() {
  unknownCount_ = 0;
  unknown_.clear();
}

void Instrument::Advance(std::chrono::milliseconds elapsed) {
  now_ += elapsed;
}

// Takes a record only when one is read. From outside this makes no difference, and it costs no
// time.
const Record& Instrument::CurrentRecord() {
  if (IsRunning() && !WaitsForShot()) Acquire();
  return record_;
}

bool Instrument::IsRunning() {
  if (!running_ || !WaitsForShot()) return running_;
  const double shot = 12 * settings_.Seconds(Setting::kTimeRange);
  if (SecondsOf(now_ - startedAt_) < shot) return true;
  if (!FindTrigger(settings_, inputs_, SecondsOf(now_))) return true;
  Acquire();
  running_ = false;
  return false;
}

void Instrument::Acquire() {
  const double clock = SecondsOf(now_);
  const auto number = static_cast<std::uint64_t>(now_.count());
  if (settings_.Is(Setting::kScan, "ON")) {
    Keep({0, clock, number});
  } else if (const auto start = FindTrigger(settings_, inputs_, clock)) {
    Keep({*start, clock, number});
  } else if (settings_.Is(Setting::kTrigMode, "AUTO") || settings_.Is(Setting::kMethod, "VIDEO")) {
    TakeFree();
  }
  // Otherwise the instrument waits, and its screen keeps the last record.
}

bool Instrument::WaitsForShot() const {
  // The trigger modes apply to edges and pulses only.
  return settings_.Is(Setting::kTrigMode, "SINGLE") && !settings_.Is(Setting::kMethod, "VIDEO");
}

void Instrument::TakeFree() {
  // Without a trigger the record begins anywhere in the signals.
  const auto number = static_cast<std::uint64_t>(now_.count());
  const double repetition = CommonRepetition(inputs_.signals[0], inputs_.signals[1]);
  const double place = (NoiseAt(inputs_.seed, number, 0, ~0u) + 1) / 2;
  Keep({place * repetition, SecondsOf(now_), number});
}

void Instrument::Keep(Record record) {
  record_ = record;
  recorded_ = inputs_;
}

void Instrument::Start() {
  running_ = true;
  startedAt_ = now_;
}

void Instrument::Run() {
  // Only the key arms a single shot.
  if (!WaitsForShot()) Start();
}

void Instrument::PressRun() {
  if (IsRunning()) {
    Stop();
  } else {
    Start();
  }
}

void Instrument::Stop() {
  CurrentRecord();
  running_ = false;
}

void Instrument::ForceTrigger() {
  if (!IsRunning() || settings_.Is(Setting::kTrigMode, "AUTO")) return;
  TakeFree();
  if (WaitsForShot()) running_ = false;
}

void Instrument::SetLevelToMiddle() {
  const std::string_view source = settings_.Text(Setting::kSource);
  if (!source.starts_with("CH")) return;
  const Channel channel = source == "CH1" ? Channel::k1 : Channel::k2;
  const auto [lowest, highest] = ExtremesOf(settings_, inputs_, channel);
  const double middle = settings_.Is(Setting::kTrigCoupling, "AC") ? 0 : (lowest + highest) / 2;
  const int level = NearestPosition(middle / settings_.VoltsPerDivision(channel));
  settings_.Set(Setting::kLevel, FormatDivisions(level), Turner::kHand);
}

void Instrument::CopyScreen() {
  const Record& record = CurrentRecord();
  ScreenState state{IsRunning(), identity_.model, {}};
  if (panel_.menuShown) state.menu = DescribeMenu();
  screenMemory_ = DrawScreen(settings_, recorded_, record, panel_, state);
}

void Instrument::FitChannel(Channel channel, double heightDivisions, double centreDivisions) {
  const auto [lowest, highest] = ExtremesOf(settings_, inputs_, channel);
  const Setting range = OfChannel(Setting::kRange1, channel);
  for (const std::string_view row : settings_.Choices(range)) {
    settings_.Set(range, row, Turner::kHand);
    if ((highest - lowest) / settings_.VoltsPerDivision(channel) <= heightDivisions) break;
  }
  const double middle = (lowest + highest) / 2 / settings_.VoltsPerDivision(channel);
  settings_.Set(OfChannel(Setting::kOffset1, channel),
                FormatDivisions(NearestPosition(centreDivisions - middle)), Turner::kHand);
}

void Instrument::FitTimeBase(Channel source) {
  constexpr double kPeriodsShown = 2.2;
  const double wanted = kPeriodsShown / inputs_.Of(source).frequency;
  for (const std::string_view row : settings_.Choices(Setting::kTimeRange)) {
    settings_.Set(Setting::kTimeRange, row, Turner::kHand);
    if (12 * settings_.Seconds(Setting::kTimeRange) >= wanted) break;
  }
  settings_.Set(Setting::kDelay, "0.0000s", Turner::kHand);
}

void Instrument::AutoSet() {
  const bool first = settings_.Is(Setting::kDisplay1, "ON");
  const bool second = settings_.Is(Setting::kDisplay2, "ON");
  const bool both = first && second;
  if (first) FitChannel(Channel::k1, both ? 3.6 : 7, both ? 2 : 0);
  if (second) FitChannel(Channel::k2, both ? 3.6 : 7, both ? -2 : 0);
  const bool bySecond = second && !first;
  constexpr std::array<std::pair<Setting, std::string_view>, 6> kCalm{{
      {Setting::kScan, "OFF"},
      {Setting::kFormat, "Y-T"},
      {Setting::kMethod, "EDGE"},
      {Setting::kSlope, "RISING"},
      {Setting::kTrigMode, "AUTO"},
      {Setting::kTrigCoupling, "DC"},
  }};
  for (const auto& [setting, value] : kCalm) settings_.Set(setting, value, Turner::kHand);
  settings_.Set(Setting::kSource, bySecond ? "CH2" : "CH1", Turner::kHand);
  FitTimeBase(bySecond ? Channel::k2 : Channel::k1);
  SetLevelToMiddle();
  Start();
}

}  // namespace tx5000

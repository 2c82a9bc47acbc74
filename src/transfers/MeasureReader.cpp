#include "transfers/MeasureReader.h"

#include <optional>

#include "link/StringRES.h"

namespace oriolemark {
namespace {

constexpr Milliseconds kSettle(200);
constexpr Milliseconds kBetweenQueries(100);
// Per cent. The bar refuses the last step, which would pass its end.
constexpr double kStep = 5.6;

enum class Rule {
  Cut,      // drops the name and the equal sign
  Percent,  // the same; adds the percent sign that the reply lacks
  Bound,    // finds the value behind the equal sign, or a bound behind its sign
};

struct MeasureQuery {
  const char* command;
  std::size_t index;  // in TransferValues
  Rule rule;
  std::size_t cut = 0;
  char bound = '\0';
};

// The instrument is asked in this order. Its bound of a frequency has another sign than its bounds
// of times.
constexpr MeasureQuery kQueries[kMeasureValues] = {
    {kFreq, 7, Rule::Bound, 0, '>'},
    {kVpp, 0, Rule::Cut, 4},
    {kVmax, 1, Rule::Cut, 5},
    {kVmin, 2, Rule::Cut, 5},
    {kVtop, 4, Rule::Cut, 5},
    {kVavg, 3, Rule::Cut, 5},
    {kVbase, 5, Rule::Cut, 6},
    {kVrms, 6, Rule::Cut, 5},
    {kVamp, 15, Rule::Cut, 5},
    {kPlusDuty, 16, Rule::Percent, 6},
    {kMinusDuty, 17, Rule::Percent, 6},
    {kPeriod, 10, Rule::Bound, 0, '<'},
    {kRiseTime, 8, Rule::Bound, 0, '<'},
    {kFallTime, 9, Rule::Bound, 0, '<'},
    {kPlusWidth, 11, Rule::Bound, 0, '<'},
    {kMinusWidth, 12, Rule::Bound, 0, '<'},
    {kVovr, 13, Rule::Percent, 5},
    {kVpre, 14, Rule::Percent, 5},
};

// Returns nothing if the reply is shorter than the cut.
std::optional<std::string> Cut(const std::string& reply, std::size_t count) {
  if (reply.size() < count) return std::nullopt;
  return reply.substr(count);
}

// A reply that is too short gets its sign uncut, so that a missing one reads "%".
std::string Percent(const std::string& reply, std::size_t count) {
  const std::string value = Cut(reply, count).value_or(reply);
  return value.find('*') == std::string::npos ? value + "%" : value;
}

std::string Bound(const std::string& reply, char sign) {
  const std::size_t equal = reply.find('=');
  if (equal != std::string::npos) return reply.substr(equal + 1);
  const std::size_t bound = reply.find(sign);
  return bound != std::string::npos ? reply.substr(bound) : "*****";
}

std::optional<std::string> ValueIn(const std::string& reply, const MeasureQuery& query) {
  if (query.rule == Rule::Bound) return Bound(reply, query.bound);
  if (query.rule == Rule::Percent) return Percent(reply, query.cut);
  return Cut(reply, query.cut);
}

}  // namespace

void MeasureReader::ReadTitle(bool first) {
  std::string& title = context_.scratch.TransferText;
  TX5000Cmd& scope = context_.scope;
  title = first ? "CH1 " : "CH2 ";
  const std::string range =
      scope.AskScope(std::string(first ? kChannel1 : kChannel2) + kRange + kQuery);
  const std::string time = scope.AskScope(std::string(kTimeBase) + kRange + kQuery);
  title += range + "  " + time + " [Date:" + context_.today() + "]";
}

void MeasureReader::ReadMeasures(const std::string& channel) {
  const bool first = channel == "CH1";
  ProgressBar& bar = context_.progress.bar;
  context_.waiting.Sleep(kSettle);
  ReadTitle(first);
  context_.scope.SendToScope(std::string(kMeasure) + kCurrentSource + (first ? kCH1 : kCH2));
  for (const MeasureQuery& query : kQueries) {
    // Nobody waits for the values of an item that has been removed.
    if (context_.scratch.TransferMeasureSlot == kNoSlot) return;
    if (&query != kQueries) context_.waiting.Sleep(kBetweenQueries);
    const std::string reply = context_.scope.AskScope(std::string(kMeasure) + query.command);
    bar.SetValue(bar.Value() + kStep);
    bar.Refresh();
    context_.waiting.DoEvents();
    if (auto value = ValueIn(reply, query)) {
      context_.scratch.TransferValues[query.index] = *std::move(value);
    }
  }
}

}  // namespace oriolemark

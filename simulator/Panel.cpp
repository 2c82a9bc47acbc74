#include "simulator/Panel.h"

#include <iterator>
#include <span>

namespace tx5000 {
namespace {

using Texts = std::span<const std::string_view>;

constexpr std::string_view kOffOn[] = {"OFF", "ON"};
constexpr std::string_view kChannels[] = {"CH1", "CH2"};
constexpr std::string_view kCursorKinds[] = {"OFF", "VOLT", "TIME"};
constexpr std::string_view kPlaces[] = {"-3 div", "-2 div", "-1 div", "0 div",
                                        "1 div",  "2 div",  "3 div"};
constexpr std::string_view kMeasures[] = {
    "Vpp",  "Vmax", "Vmin",   "Vtop",   "Vbase",  "Vamp",  "Vavg",  "Vrms",     "Vovr",
    "Vpre", "Freq", "Period", "+Width", "-Width", "+Duty", "-Duty", "RiseTime", "FallTime"};
constexpr std::string_view kSetups[] = {"1", "2", "3", "4"};
constexpr std::string_view kOperations[] = {"OFF", "CH1+CH2", "CH1-CH2"};

struct Row {
  Option option;
  Texts texts;
  std::size_t initial;
};

constexpr Row kRows[] = {
    {Option::kCursors, kCursorKinds, 0},  {Option::kCursorSource, kChannels, 0},
    {Option::kCursor1, kPlaces, 1},       {Option::kCursor2, kPlaces, 5},
    {Option::kMeasured, kChannels, 0},    {Option::kMeasure1, kMeasures, 0},
    {Option::kMeasure2, kMeasures, 10},   {Option::kMeasure3, kMeasures, 7},
    {Option::kMeasure4, kMeasures, 14},   {Option::kSetup, kSetups, 0},
    {Option::kMath, kOperations, 0},      {Option::kReferenceSource, kChannels, 0},
    {Option::kReferenceShown, kOffOn, 0},
};

constexpr bool RowsStandInOrder() {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].option != static_cast<Option>(i)) return false;
  }
  return std::size(kRows) == static_cast<std::size_t>(Option::kCount);
}
static_assert(RowsStandInOrder());

}  // namespace

Texts OptionTexts(Option option) {
  return kRows[static_cast<std::size_t>(option)].texts;
}

Panel::Panel() {
  for (std::size_t i = 0; i < chosen.size(); ++i) chosen[i] = kRows[i].initial;
}

int Panel::DivisionsOf(Option cursor) const {
  return static_cast<int>(At(cursor)) - static_cast<int>(std::size(kPlaces) / 2);
}

}  // namespace tx5000

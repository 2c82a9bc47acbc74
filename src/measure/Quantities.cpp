#include "measure/Quantities.h"

#include <algorithm>

namespace oriolemark {
namespace {

constexpr UnitFamily kVolts{ConvertStrToVolt, SetVoltToUnitBox, kVoltUnits};
constexpr UnitFamily kPercents{ConvertStrToPercent, SetPercentToUnitBox, kPercentUnits};
constexpr UnitFamily kFrequencies{ConvertStrToFreq, SetFreqToUnitBox, kFreqUnits};
constexpr UnitFamily kTimes{ConvertStrToTime, SetTimeToUnitBox, kTimeUnits};

constexpr std::string_view kPass = "Pass";

}  // namespace

constexpr std::array<Quantity, kMeasureValues> kQuantities{{
    {"Vpp", "Vpp", "Vpp", 1, 0, kVolts},
    {"Vmax", "Vmax", "Vmax", 2, 1, kVolts},
    {"Vmin", "Vmin", "Vmin", 3, 2, kVolts},
    {"Vavg", "Vavg", "Vavg", 4, 3, kVolts},
    {"Vamp", "Vtamp", "Vamp", 5, 15, kVolts},
    {"Vtop", "Vtop", "Vtop", 6, 4, kVolts},
    {"Vbase", "Vbase", "Vbase", 7, 5, kVolts},
    {"Vrms", "Vrms", "Vrms", 8, 6, kVolts},
    {"Vover", "Vover", "Vover", 9, 13, kPercents},
    {"Vpre", "Vpre", "Vpre", 10, 14, kPercents},
    {"Frequency", "Frequency", "Frequency", 11, 7, kFrequencies},
    {"Rise Time", "Rise Time", "Rise Time", 13, 8, kTimes},
    {"Fall Time", "Fall Time", "Fall Time", 14, 9, kTimes},
    {"Period", "Period", "Period", 12, 10, kTimes},
    {"+Pulse Width", "+Pulse Width", "Pulse Width+", 15, 11, kTimes},
    {"-Pulse Width", "-Pulse Width", "Pulse Width-", 16, 12, kTimes},
    {"+Duty", "+Duty", "Duty+", 17, 16, kPercents},
    {"-Duty", "-Duty", "Duty-", 18, 17, kPercents},
}};

const Quantity* QuantityNamed(std::string_view caption) {
  const auto* found = std::ranges::find(kQuantities, caption, &Quantity::caption);
  return found == kQuantities.end() ? nullptr : found;
}

std::string Judge(const MeasureValue& value, const UnitFamily& family) {
  if (!value.Enabled) return {};
  const Converted measured = family.toNumber(value.Text);
  if (!measured.ConvertValid) return "Fail";
  if (measured.value < value.Under) return "Fail [Under Limit]";
  if (measured.value > value.Over) return "Fail [Over Limit]";
  return std::string(kPass);
}

int PictureOf(std::string_view verdict) {
  if (verdict.empty()) return 0;
  return verdict == kPass ? kPassPicture : kFailPicture;
}

}  // namespace oriolemark

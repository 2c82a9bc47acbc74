#pragma once

#include <array>
#include <string>

#include "datasheet/records/ItemRecord.h"

namespace oriolemark {

inline constexpr int kMeasureValues = 18;

// One automatic measurement with its limits, in volts, hertz, seconds or as a fraction.
struct MeasureValue {
  std::string Text;      // as shown, with the unit
  bool Enabled = false;  // pass/fail testing is on
  double Over = 0;
  double Under = 0;
  std::string Verdict;  // run-time only
};

struct MeasureRecord : ItemRecord {
  std::array<MeasureValue, kMeasureValues> Values;
  std::string Title;
};

struct MeasureLimits {
  const char* quantity;
  double over;
  double under;
};

// The quantities in the order of `Values` and of the file, with a new item's limits.
inline constexpr std::array<MeasureLimits, kMeasureValues> kMeasureDefaults{{
    {"Vpp", 0.2, 0.1},
    {"Vmax", 0.2, 0.1},
    {"Vmin", 0.2, 0.1},
    {"Vavg", 0.2, 0.1},
    {"Vtop", 0.2, 0.1},
    {"Vbase", 0.2, 0.1},
    {"Vrms", 0.2, 0.1},
    {"Freq", 2000000, 1000000},
    {"RiseTime", 0.000002, 0.000001},
    {"FallTime", 0.000002, 0.000001},
    {"Period", 0.000002, 0.000001},
    {"+Width", 0.0002, 0.0001},
    {"-Width", 0.0002, 0.0001},
    {"Vovr", 0.1, 0.05},
    {"Vpre", 0.1, 0.05},
    {"Vamp", 0.2, 0.1},
    {"+Duty", 0.6, 0.4},
    {"-Duty", 0.6, 0.4},
}};

}  // namespace oriolemark

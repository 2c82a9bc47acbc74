#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "datasheet/records/MeasureRecord.h"
#include "values/StringFunc.h"

namespace oriolemark {

// A kind of unit, shared by several quantities.
struct UnitFamily {
  Converted (*toNumber)(std::string_view text);
  UnitBoxText (*toBox)(double value);
  std::span<const char* const> units;  // counted by UnitBoxText::index
};

// One of the instrument's automatic measurements.
struct Quantity {
  const char* caption;  // in the list and in the limits dialog
  const char*
      emptyCaption;      // in a list without values; one is spelled differently there on purpose
  const char* fileName;  // in an exported file
  int picture;           // from 1 on
  std::size_t index;     // in MeasureRecord::Values
  const UnitFamily& family;
};

// In the order of the list and of an exported file.
extern const std::array<Quantity, kMeasureValues> kQuantities;

// The pictures of a verdict follow those of the quantities.
inline constexpr int kPassPicture = kMeasureValues + 1;
inline constexpr int kFailPicture = kMeasureValues + 2;

// The quantity with this caption. Null if there is none.
const Quantity* QuantityNamed(std::string_view caption);

// The verdict on a value: empty if it is not tested. Both limits are inclusive. A text that cannot
// be converted fails.
std::string Judge(const MeasureValue& value, const UnitFamily& family);

// The picture of a verdict; 0 for an empty one.
int PictureOf(std::string_view verdict);

}  // namespace oriolemark

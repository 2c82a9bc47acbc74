#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "datasheet/records/ItemRecord.h"

namespace oriolemark {

// One channel's samples as a table: the raw hexadecimal tokens as the instrument sent them.
struct DataRecord : ItemRecord {
  std::vector<std::string> Samples;  // indexes 0 to 17000, samples from index 1 on
  std::int32_t Count = 0;
  std::string Title;
  double VoltRange = 0;     // V per division
  double VoltOffset = 0;    // V
  double TimeRange = 0;     // s per division
  double TriggerDelay = 0;  // s
};

}  // namespace oriolemark

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "datasheet/records/MeasureRecord.h"
#include "datasheet/records/WaveRecord.h"

namespace oriolemark {

// Where a transfer leaves its result. Never cleared between transfers: a reply that is shorter than
// the one before leaves the older tail in place.
struct TransferScratch {
  std::string TransferText;
  std::array<std::string, kMeasureValues> TransferValues;
  std::vector<std::string> TransferTokens;  // indexes 0 to 17000
  SampleArray TransferSamples;
  std::int32_t TransferSize = 0;
  double TransferVoltRange = 0;
  double TransferVoltOffset = 0;
  double TransferTimeRange = 0;
  double TransferTriggerDelay = 0;
  // The wave slot that a wave read fills.
  int TransferWaveSlot = 0;
};

}  // namespace oriolemark

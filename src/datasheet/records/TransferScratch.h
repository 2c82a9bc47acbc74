#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "datasheet/records/MeasureRecord.h"
#include "datasheet/records/WaveRecord.h"

namespace oriolemark {

// Where a transfer stores its result. It is never cleared between transfers: behind a reply that is
// shorter than the one before, the older values stay.
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
  // The wave slot that a transfer fills.
  int TransferWaveSlot = 0;
};

}  // namespace oriolemark

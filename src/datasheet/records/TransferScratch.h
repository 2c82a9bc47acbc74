#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "datasheet/records/MeasureRecord.h"
#include "datasheet/records/WaveRecord.h"

namespace oriolemark {

inline constexpr int kNoSlot = -1;

// The most bytes of a sample's token. One of the instrument has four. Longer ones are cut, because
// every item that is read or loaded later has a copy of the tokens before it.
inline constexpr std::size_t kLongestToken = 64;

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
  // For each kind, the slot of the item that is being read, kNoSlot if none is. It follows its item
  // to another slot. Once the item has been removed, the rest of its reading is dropped.
  int TransferWaveSlot = 0;
  int TransferMeasureSlot = 0;
  int TransferDataSlot = 0;
};

}  // namespace oriolemark

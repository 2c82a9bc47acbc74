#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "datasheet/records/ItemRecord.h"

namespace oriolemark {

// Highest index of a sample buffer. Samples are at indexes 1 to Count. Index 0 holds the
// unconverted first sample of a block read over GPIB or USB; it is never shown.
inline constexpr int kLastSample = 17000;

// Rows of the instrument's screen: 0 is the top, 199 the bottom, 25 rows per division. The caller
// must not read an index outside 0 to 17000. All rows are 0 at first, and take no memory until one
// is stored.
class SampleArray {
 public:
  static bool Holds(int index) { return index >= 0 && index <= kLastSample; }
  std::int32_t operator[](int index) const {
    return rows_.empty() ? 0 : rows_[static_cast<std::size_t>(index)];
  }
  // The rows at indexes 0 to 17000.
  std::span<const std::int32_t> Rows() const {
    static const std::vector<std::int32_t> kNone(kLastSample + 1);
    return rows_.empty() ? kNone : rows_;
  }
  // Ignores an index outside 0 to 17000.
  void Store(int index, std::int32_t row) {
    if (Holds(index)) RowsToFill()[static_cast<std::size_t>(index)] = row;
  }
  // The same rows, to be stored in. Takes their memory.
  std::span<std::int32_t> RowsToFill() {
    if (rows_.empty()) rows_.resize(kLastSample + 1);
    return rows_;
  }
  bool operator==(const SampleArray&) const = default;

 private:
  std::vector<std::int32_t> rows_;
};

// One waveform as the instrument's screen showed it. The texts are the instrument's replies,
// unchanged. For a channel that was not read, offset and range keep what the slot held.
struct WaveRecord : ItemRecord {
  SampleArray CH1Data;  // the maximum trace in envelope mode
  SampleArray CH1Min;
  SampleArray CH2Data;
  SampleArray CH2Min;
  std::int32_t Count = 0;  // samples of one trace in one screen width
  bool Envelope = false;
  bool IsYT = false;  // false: X-Y
  bool IsScan = false;
  std::int16_t RollingStartPos = 0;    // grid units, with IsScan only
  std::int16_t RollingEraseWidth = 0;  // grid units, with IsScan only
  std::string CH1Offset;
  std::string CH2Offset;
  std::string CH1Range;
  std::string CH2Range;
  std::string TimeRange;
  std::string TriggerDelay;
  std::string Date;           // run-time only
  std::int32_t Channels = 0;  // 1 CH1, 2 CH2, 3 both
  bool ColorOn = false;
  bool GridOn = false;
  bool BestFitOn = false;
  // The spectrum trace, run-time only. Once there is one, nothing removes it.
  bool FFTOn = false;
  std::string FFTWindow;  // name of the window function
  SampleArray FFTData;    // rows at indexes 0 to FFTCount - 1; index 0 is never shown
  bool FFTFull = false;   // over the whole screen; the drawing does not read it
  std::int32_t FFTCount = 0;

  bool operator==(const WaveRecord&) const = default;
};

}  // namespace oriolemark

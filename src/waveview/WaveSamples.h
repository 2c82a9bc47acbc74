#pragma once

#include <string>
#include <vector>

#include "datasheet/records/WaveRecord.h"

namespace oriolemark {

struct SampleColumn {
  std::string name;
  std::string unit;
  std::vector<double> values;
};

// The traces of a record as numbers: seconds and volts on the scale of the instrument's screen, one
// value for each sample. The trigger delay is in the screen's middle. An envelope has a column of
// maxima and one of minima for each channel. An X-Y figure has no time. A record without data has
// no columns. Where a text of the scale cannot be read, the values are not numbers (NaN).
std::vector<SampleColumn> WaveColumns(const WaveRecord& record);

}  // namespace oriolemark

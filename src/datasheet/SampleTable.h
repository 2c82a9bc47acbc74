#pragma once

#include <string>
#include <vector>

#include "datasheet/records/DataRecord.h"

namespace oriolemark {

// The table of a record's samples, made from the record whenever it is asked for. Counts and
// numbers of a record may come from any file.

// The columns: number of the sample, voltage (V), time (s).
inline const std::vector<std::string> kSampleColumns{"NO.", "Voltage", "Time"};

// The number of samples that the record holds, 0 to 17000: its count, less those without a token.
int SampleCount(const DataRecord& record);
// The cell of a sample, numbered from 1. Empty for a sample that the record does not hold.
std::string SampleText(const DataRecord& record, int sample, int column);
// The same as an export or a copy has it: a blank before and behind the number.
std::string ExportedSampleText(const DataRecord& record, int sample, int column);
// The bytes of the exported file. An item without data has only the header lines, without a title.
std::string SampleTableText(const DataRecord& record);

}  // namespace oriolemark

#pragma once

#include <string>

#include "datasheet/records/MeasureRecord.h"

namespace oriolemark {

// The text file of a measure item: a header and one line for each quantity, with its value and the
// verdict that was shown last. An item without data has neither title nor values.
std::string MeasureFileText(const MeasureRecord& record);

}  // namespace oriolemark

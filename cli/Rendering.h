#pragma once

#include <string>
#include <string_view>

#include "cli/Result.h"

namespace oriolemark {

// A text (8-bit) in UTF-8, without the control characters that would work a terminal.
std::string Printable(std::string_view text);
// The line of a message on standard error.
std::string ErrorLine(const std::string& text);
// A message (UTF-8), whose lines CR separates, in the same form.
std::string LinesOf(std::string message);

// A result as text for people, UTF-8, with a line end behind each line.
std::string TextOf(const Result& result);

// A result as CSV (RFC 4180, but lines end in LF). Names carry their units, as in "Vpp_V". The
// samples, if there are any; else one line of values. A value that is missing is empty.
std::string CsvHead(const Result& result);
std::string CsvRows(const Result& result);

// A result as one JSON object on one line. Samples are one array for each column. A value that is
// missing is null. With a `time`, that comes first. A result of parts is an array.
std::string JsonOf(const Result& result, const std::string& time = {});

}  // namespace oriolemark

#pragma once

#include <string>
#include <variant>
#include <vector>

#include "cli/Call.h"

namespace oriolemark {

// Reads the arguments, without the program's name. Returns an answer for "--help", "--version" and
// mistakes. `version` is major.minor.revision.
std::variant<Call, Answer> ReadArguments(const std::vector<std::string>& arguments,
                                         const std::string& version);

}  // namespace oriolemark

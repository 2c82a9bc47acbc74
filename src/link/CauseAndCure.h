#pragma once

#include <string>

namespace oriolemark {

// The end of an error message: an empty line, then the driver's cause and cure. Empty if the driver
// does not know them.
inline std::string CauseAndCure(const std::string& problem) {
  return problem.empty() ? "" : "\n\n" + problem;
}

}  // namespace oriolemark

#pragma once

#include <string>

namespace oriolemark {

// What follows a message's own words: an empty line, then cause and cure as a driver knows them.
// Nothing where it does not.
inline std::string CauseAndCure(const std::string& problem) {
  return problem.empty() ? "" : "\n\n" + problem;
}

}  // namespace oriolemark

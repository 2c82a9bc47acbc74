#pragma once

#include <string>

namespace oriolemark {

// The manual (UTF-8 path): beside the executable, or where an installation keeps shared data. The
// first of these where there is none.
std::string HelpFilePath();

}  // namespace oriolemark

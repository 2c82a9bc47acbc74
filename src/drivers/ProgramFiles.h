#pragma once

#include <string>

namespace oriolemark {

// The manual (UTF-8 path): beside the executable, or where an installation keeps shared data. Where
// there is none, its place in the program's folder: the executable's if it can be written,
// otherwise the user's data folder.
std::string HelpFilePath();

}  // namespace oriolemark

#pragma once

#include <cstdio>
#include <string>

namespace oriolemark {

// The manual (UTF-8 path): beside the executable, or where an installation keeps shared data. Where
// there is none, its place in the program's folder: the executable's if it can be written,
// otherwise the user's data folder.
std::string HelpFilePath();

// Brings the file's bytes to the disk. Fits `SyncFile`.
bool SyncToDisk(std::FILE* file);

}  // namespace oriolemark

#pragma once

#include <cstdio>
#include <string>

namespace oriolemark {

// The manual (UTF-8 path): beside the executable, or in ../share/oriolemark, where an installation
// puts it. If there is no manual, its place in the program's folder. This is the executable's
// folder if it is writable and no installation, otherwise the user's data folder.
std::string HelpFilePath();

// The file that holds a picture on its way to the printed page (UTF-8 path), in the program's
// folder. Makes the folder if it does not exist.
std::string HandOverFilePath();

// The folder of safety copies (UTF-8 path), in the user's data folder. It may not exist yet.
std::string RecoveredFolder();

// Writes the file's bytes through to the disk. Its type is `SyncFile`.
bool SyncToDisk(std::FILE* file);

}  // namespace oriolemark

#pragma once

#include <string>

#include "controller/records/CtrlSettings.h"
#include "platform/Files.h"
#include "platform/Prompts.h"

namespace oriolemark {

// The file of one set of settings: a signature and 40 values, a line each, in double quotes, ended
// by CR LF. Paths are UTF-8.

// Reads the file into the settings. A file that cannot be opened or has another signature is told
// to the user, and the settings stay. A line that is missing or is no quoted text leaves its field;
// what lies beyond the first mebibyte counts as missing.
void ReadControlFile(const std::string& path, CtrlSettings& settings, Prompts& prompts);

// Replaces the file. The user is told why it cannot be opened for writing or the disk does not take
// it; the file is then as it was.
void WriteControlFile(const std::string& path, const CtrlSettings& settings, Prompts& prompts,
                      const SyncFile& sync);

}  // namespace oriolemark

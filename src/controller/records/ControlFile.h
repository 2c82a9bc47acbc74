#pragma once

#include <string>

#include "controller/records/CtrlSettings.h"
#include "platform/Files.h"
#include "platform/Prompts.h"

namespace oriolemark {

// The file of one set of settings: a signature and 40 values, each on its own line in double
// quotes. Lines end in CR LF. Paths are UTF-8.

// Reads the file into the settings. If the file cannot be opened or has another signature, shows a
// message and leaves the settings unchanged. A line that is missing or not quoted leaves its field
// unchanged. Everything beyond the first mebibyte counts as missing.
void ReadControlFile(const std::string& path, CtrlSettings& settings, Prompts& prompts);

// The bytes of the file.
std::string ControlFileText(const CtrlSettings& settings);

// Replaces the file. If the file cannot be opened for writing or the disk refuses the bytes, shows
// the reason and returns false. After a failure the old file is unharmed, unless WriteFile had to
// write in place.
bool WriteControlFile(const std::string& path, const CtrlSettings& settings, Prompts& prompts,
                      const SyncFile& sync);

}  // namespace oriolemark

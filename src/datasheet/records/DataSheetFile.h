#pragma once

#include <string>

#include "datasheet/records/DataSheet.h"
#include "datasheet/records/TransferScratch.h"
#include "platform/Files.h"
#include "platform/Prompts.h"

namespace oriolemark {

// The file of a data sheet: a signature, the title and three counts, then all waves, all measures
// and all wave data. Dates, verdicts, spectra and the state of the views are not in it. Paths are
// UTF-8.

// Reads the file into a cleared sheet. If it cannot be opened (one above 256 MiB counts as such) or
// has another signature, shows why and changes nothing. Later faults show no message: a field that
// is missing or has another form leaves its old value, samples behind the end of the file are 0.
// Tokens go through `TransferTokens`, so an item has the older tokens behind its own. Items behind
// slot 17 are skipped, and at the end the counts are brought into 0 to 18. Builds no tree and no
// views.
void ReadDataSheet(const std::string& path, DataSheet& sheet, TransferScratch& scratch,
                   Prompts& prompts);

// The bytes of the file.
std::string DataSheetText(const DataSheet& sheet);

// Replaces the file. Returns whether it now holds the sheet; if not, has shown the reason. After a
// failure the old file is unharmed, unless WriteFile had to write in place.
bool WriteDataSheet(const std::string& path, const DataSheet& sheet, Prompts& prompts,
                    const SyncFile& sync);

}  // namespace oriolemark

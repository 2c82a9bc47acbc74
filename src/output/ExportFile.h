#pragma once

#include <functional>
#include <string>

#include "platform/Files.h"
#include "platform/Prompts.h"

namespace oriolemark {

// The file dialog of an export.
struct ExportDialog {
  const char* title;
  const char* filter;  // as in FileQuestion
};

// A table is the same text under each of these extensions.
inline constexpr ExportDialog kTableExport{
    "Export File",
    "Microsoft Excel Files (*.xls)|*.xls|Text Files (*.txt)|*.txt|All Files (*.*)|*.*"};

// The parts of the desktop that an export uses.
struct ExportContext {
  Prompts& prompts;
  SyncFile sync;
};

// Asks for a file and writes what `makeBytes` returns, which is only called once there is a name. A
// cancelled dialog ends the command. If the file cannot be opened or written, shows the system's
// reason. The old file is then unharmed, unless WriteFile had to write in place.
void ExportFile(const ExportContext& context, const ExportDialog& dialog,
                const std::function<std::string()>& makeBytes);

}  // namespace oriolemark

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

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

// Writes the file. If it cannot be opened or written, shows the system's reason. The old file is
// then unharmed, unless WriteFile had to write in place.
void SaveFile(const ExportContext& context, const std::string& path, std::string_view bytes);

// Asks for a file and saves what `makeBytes` returns, which is only called once there is a name. A
// cancelled dialog ends the command. Nothing means a picture that is too large to be drawn; this is
// reported, and no file is touched.
void ExportFile(const ExportContext& context, const ExportDialog& dialog,
                const std::function<std::optional<std::string>()>& makeBytes);

}  // namespace oriolemark

#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace oriolemark {

// Whole files. Paths are UTF-8; error texts are the system's own words (UTF-8). Only plain files
// are opened: a pipe or a device could keep the program waiting for ever.

struct FileContents {
  std::string bytes;
  std::optional<std::string> error;  // the file could not be opened
};

// At most the first `limit` bytes of the file, and of those what can be read.
FileContents ReadFile(const std::string& path, std::size_t limit);

// Brings what was written to the disk itself; false, with errno set, where that fails.
using SyncFile = std::function<bool(std::FILE* file)>;

struct WriteFailure {
  enum class Step { Open, Write };  // the file may not be written, or the disk takes no bytes
  Step step;
  std::string text;
};

// Replaces the file, or makes it, so that whoever ends the program or the power meanwhile leaves
// the old contents or the new ones, and so does any failure. Links are followed and the file's
// rights kept; the name ".NAME.saving" beside it is ours, and what an ended program has left there
// goes. Where the folder refuses the new file, it is written in place, and has no such protection.
std::optional<WriteFailure> WriteFile(const std::string& path, std::string_view bytes,
                                      const SyncFile& sync);

}  // namespace oriolemark

#pragma once

#include <cstddef>
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

// Replaces the file, or makes it, so that whoever ends the program meanwhile leaves the old
// contents or the new ones. Links are followed and the file's rights kept; the name ".NAME.saving"
// beside it is ours. The error tells that the file cannot be opened for writing; when it can, but a
// full disk does not take the bytes, the old contents stay and nothing is told. Where the folder
// refuses the new file, it is written in place, and has no such protection.
std::optional<std::string> WriteFile(const std::string& path, std::string_view bytes);

}  // namespace oriolemark

#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace oriolemark {

// Reads and writes whole files. Paths are UTF-8. Error texts are the system's own words (UTF-8).
// Only regular files are opened, because a pipe or a device could block the program for ever.

struct FileContents {
  std::string bytes;
  std::optional<std::string> error;  // set if the file could not be opened or the disk failed
};

// How a file that is longer than the limit is treated.
enum class TooLong { Cut, Refuse };

// Reads at most `limit` bytes from the start of the file. A longer file is cut there, or counts as
// one that could not be opened.
FileContents ReadFile(const std::string& path, std::size_t limit, TooLong tooLong = TooLong::Cut);

// Flushes what was written to the disk itself. Returns false and sets errno on failure.
using SyncFile = std::function<bool(std::FILE* file)>;

struct WriteFailure {
  enum class Step { Open, Write };  // opening the file for writing failed, or writing its bytes
  Step step;
  std::string text;
};

// Replaces or creates the file. If the program or the power ends meanwhile, or a step fails, the
// file holds either its old contents or the new ones. Follows links and keeps the file's
// permissions. Writes the new file as ".NAME.saving" in the same folder first, and removes one that
// an ended program has left there. If the new file cannot be made or renamed, for another reason
// than a full disk, writes the target in place, without this protection.
std::optional<WriteFailure> WriteFile(const std::string& path, std::string_view bytes,
                                      const SyncFile& sync);

}  // namespace oriolemark

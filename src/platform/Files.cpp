#include "platform/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace oriolemark {
namespace {

namespace fs = std::filesystem;

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

std::string Describe(int error) {
  return std::generic_category().message(error);
}

File Open(const fs::path& path, const char* mode) {
  errno = 0;
  return File(std::fopen(path.c_str(), mode));
}

// Why this is no file to open: a folder, something that is not a file at all, or a path that leads
// nowhere, round a loop for instance.
std::optional<std::string> RefuseKind(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) return Describe(EISDIR);
  if (fs::exists(status)) {
    return fs::is_regular_file(status) ? std::nullopt : std::optional(Describe(EINVAL));
  }
  return status.type() == fs::file_type::not_found ? std::nullopt
                                                   : std::optional(Describe(error.value()));
}

// Where the link leads to in the end, whether there is a file or not. Links never form a loop here.
fs::path FollowLinks(fs::path path) {
  std::error_code error;
  while (fs::is_symlink(path, error)) {
    const fs::path target = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / target;
  }
  return path;
}

// Written to the last byte, as far as the system tells.
bool WriteAll(File file, std::string_view bytes) {
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  return std::fclose(file.release()) == 0 && written;
}

// A name of our own in the same folder.
fs::path BesideOf(const fs::path& path) {
  return path.parent_path() / ("." + path.filename().native() + ".saving");
}

// A new file, never one that a link or another program has put there. What an ended program has
// left under the name is taken away.
File MakeBeside(const fs::path& beside) {
  std::error_code error;
  fs::remove(beside, error);
  return Open(beside, "wbx");
}

// What came of writing a new file and putting it in the target's place. Refused: the folder takes
// no such file. Full: the disk does not take the bytes.
enum class Outcome { Done, Refused, Full };

Outcome WriteBeside(const fs::path& target, std::string_view bytes) {
  const fs::path beside = BesideOf(target);
  File file = MakeBeside(beside);
  if (!file) return Outcome::Refused;
  std::error_code error;
  const fs::file_status old = fs::status(target, error);
  if (fs::exists(old)) fs::permissions(beside, old.permissions(), error);
  Outcome outcome = Outcome::Full;
  if (WriteAll(std::move(file), bytes)) {
    fs::rename(beside, target, error);
    outcome = error ? Outcome::Refused : Outcome::Done;
  }
  if (outcome != Outcome::Done) fs::remove(beside, error);
  return outcome;
}

}  // namespace

FileContents ReadFile(const std::string& path, std::size_t limit) {
  const fs::path place(path);
  if (auto refusal = RefuseKind(place)) return {.bytes = {}, .error = std::move(refusal)};
  const File file = Open(place, "rb");
  if (!file) return {.bytes = {}, .error = Describe(errno)};
  std::error_code error;
  const std::uintmax_t size = fs::file_size(place, error);
  std::string bytes(error ? limit : std::min<std::uintmax_t>(size, limit), '\0');
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return {.bytes = std::move(bytes), .error = std::nullopt};
}

std::optional<std::string> WriteFile(const std::string& path, std::string_view bytes) {
  if (auto refusal = RefuseKind(path)) return refusal;
  const fs::path target = FollowLinks(path);
  std::error_code error;
  // Opened and not emptied: only to learn whether it may be written.
  if (fs::exists(target, error) && !Open(target, "ab")) return Describe(errno);
  if (WriteBeside(target, bytes) != Outcome::Refused) return std::nullopt;
  File inPlace = Open(target, "wb");
  if (!inPlace) return Describe(errno);
  WriteAll(std::move(inPlace), bytes);
  return std::nullopt;
}

}  // namespace oriolemark

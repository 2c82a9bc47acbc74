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

// Why this is no file to open: a folder, or something that is not a file at all.
std::optional<std::string> RefuseKind(const fs::path& path) {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  if (fs::is_directory(status)) return Describe(EISDIR);
  if (fs::exists(status) && !fs::is_regular_file(status)) return Describe(EINVAL);
  return std::nullopt;
}

// Where the link leads to in the end, whether there is a file or not.
fs::path FollowLinks(fs::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i) {
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

// A name of our own, so that one left over by an ended program is used again.
fs::path BesideOf(const fs::path& path) {
  fs::path name = path.filename();
  name += ".saving";
  return path.parent_path() / ("." + name.native());
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
  if (std::ferror(file.get()) != 0) return {.bytes = {}, .error = Describe(errno)};
  return {.bytes = std::move(bytes), .error = std::nullopt};
}

std::optional<std::string> WriteFile(const std::string& path, std::string_view bytes) {
  const fs::path target = FollowLinks(path);
  if (auto refusal = RefuseKind(target)) return refusal;
  std::error_code error;
  const bool replaces = fs::exists(target, error);
  // Opened and not emptied: only to learn whether it may be written.
  if (replaces && !Open(target, "r+b")) return Describe(errno);
  const fs::path beside = BesideOf(target);
  File file = RefuseKind(beside) ? File() : Open(beside, "wb");
  if (!file) {
    File inPlace = Open(target, "wb");
    if (!inPlace) return Describe(errno);
    WriteAll(std::move(inPlace), bytes);
    return std::nullopt;
  }
  if (replaces) fs::permissions(beside, fs::status(target, error).permissions(), error);
  const bool written = WriteAll(std::move(file), bytes);
  if (written) fs::rename(beside, target, error);
  if (!written || error) fs::remove(beside, error);
  return std::nullopt;
}

}  // namespace oriolemark

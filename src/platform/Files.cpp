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

// Returns why the path cannot be opened as a file: it is a folder or a device, or leads nowhere,
// for example round a loop of links. Returns nothing if it can.
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

// Returns the final target of the link, whether or not it exists. Links cannot form a loop here.
fs::path FollowLinks(fs::path path) {
  std::error_code error;
  while (fs::is_symlink(path, error)) {
    const fs::path target = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / target;
  }
  return path;
}

// Writes the bytes down to the disk. Returns 0, or the error number of the first step that failed.
int WriteAll(File file, std::string_view bytes, const SyncFile& sync) {
  errno = 0;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
                       std::fflush(file.get()) == 0 && sync(file.get());
  const int error = written ? 0 : errno == 0 ? EIO : errno;
  return std::fclose(file.release()) == 0 || error != 0 ? error : errno;
}

// The name of our temporary file in the same folder.
fs::path BesideOf(const fs::path& path) {
  return path.parent_path() / ("." + path.filename().native() + ".saving");
}

// Creates a new file; never opens one that a link or another program has put there. First removes
// what an ended program has left under this name.
File MakeBeside(const fs::path& beside) {
  std::error_code error;
  fs::remove(beside, error);
  return Open(beside, "wbx");
}

WriteFailure Failed(WriteFailure::Step step, int error) {
  return {step, Describe(error)};
}

// Whether the folder takes no new file, or not under the target's name. The target itself may take
// new bytes all the same. After any other error, a full disk for one, the old file is not touched.
bool IsRefusal(int error) {
  constexpr int kRefusals[] = {EACCES, EPERM, EROFS, ENAMETOOLONG, EBUSY, EXDEV};
  return std::ranges::find(kRefusals, error) != std::end(kRefusals);
}

// Writes a new file and renames it over the target. Returns 0, or the error number. Returns nothing
// if the folder refuses the new file.
std::optional<int> WriteBeside(const fs::path& target, std::string_view bytes,
                               const SyncFile& sync) {
  const fs::path beside = BesideOf(target);
  File file = MakeBeside(beside);
  if (!file) return IsRefusal(errno) ? std::nullopt : std::optional(errno);
  std::error_code error;
  const fs::file_status old = fs::status(target, error);
  if (fs::exists(old)) fs::permissions(beside, old.permissions(), error);
  const int written = WriteAll(std::move(file), bytes, sync);
  if (written == 0) fs::rename(beside, target, error);
  if (written == 0 && !error) return 0;
  const int failure = written != 0 ? written : error.value();
  fs::remove(beside, error);
  if (written == 0 && IsRefusal(failure)) return std::nullopt;
  return failure;
}

}  // namespace

FileContents ReadFile(const std::string& path, std::size_t limit, TooLong tooLong) {
  const fs::path place(path);
  if (auto refusal = RefuseKind(place)) return {.bytes = {}, .error = std::move(refusal)};
  const File file = Open(place, "rb");
  if (!file) return {.bytes = {}, .error = Describe(errno)};
  std::error_code error;
  const std::uintmax_t size = fs::file_size(place, error);
  if (!error && size > limit && tooLong == TooLong::Refuse) {
    return {.bytes = {}, .error = Describe(EFBIG)};
  }
  std::string bytes(error ? limit : std::min<std::uintmax_t>(size, limit), '\0');
  errno = 0;
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  // A part of a file would be saved over the whole one later.
  if (std::ferror(file.get()) != 0) return {.bytes = {}, .error = Describe(errno)};
  return {.bytes = std::move(bytes), .error = std::nullopt};
}

std::optional<WriteFailure> WriteFile(const std::string& path, std::string_view bytes,
                                      const SyncFile& sync) {
  using Step = WriteFailure::Step;
  if (auto refusal = RefuseKind(path)) return WriteFailure{Step::Open, *std::move(refusal)};
  const fs::path target = FollowLinks(path);
  std::error_code error;
  // Opens without emptying the file, only to check that it may be written.
  if (fs::exists(target, error) && !Open(target, "ab")) return Failed(Step::Open, errno);
  std::optional<int> outcome = WriteBeside(target, bytes, sync);
  if (!outcome) {
    File inPlace = Open(target, "wb");
    if (!inPlace) return Failed(Step::Open, errno);
    outcome = WriteAll(std::move(inPlace), bytes, sync);
  }
  return outcome == 0 ? std::nullopt : std::optional(Failed(Step::Write, *outcome));
}

}  // namespace oriolemark

#include "documents/RecoveredFiles.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace oriolemark {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostCopies = 10;
// In bytes, so that title, time and extension are short enough for every file system.
constexpr std::size_t kLongestTitle = 80;
// Copies of one title within one second.
constexpr int kMostOfOneName = 100;

// The title as a part of a file's name.
std::string FileTitle(std::string title) {
  std::size_t length = std::min(title.size(), kLongestTitle);
  // Does not cut a UTF-8 character in two.
  while (length > 0 && length < title.size() && (title[length] & 0xC0) == 0x80) --length;
  title.resize(length);
  for (char& character : title) {
    const bool control = static_cast<unsigned char>(character) < ' ' || character == '\x7F';
    if (control || character == '/' || character == '\\') character = '_';
  }
  if (title.empty() || title.front() == '.') title.insert(0, "_");
  return title;
}

}  // namespace

RecoveredFiles::RecoveredFiles(std::string folder, std::function<std::string()> now, SyncFile sync)
    : folder_(std::move(folder)), now_(std::move(now)), sync_(std::move(sync)) {}

std::string RecoveredFiles::Keep(const std::string& title, const std::string& extension,
                                 std::string_view bytes) {
  std::error_code error;
  fs::create_directories(folder_, error);
  const std::string name = FileTitle(title) + " " + now_();
  for (int copy = 1; copy <= kMostOfOneName; ++copy) {
    const std::string number = copy == 1 ? "" : " (" + std::to_string(copy) + ")";
    const std::string path = (fs::path(folder_) / (name + number + extension)).string();
    if (fs::exists(fs::symlink_status(path, error))) continue;
    return WriteFile(path, bytes, sync_) ? std::string() : path;
  }
  return {};
}

void RecoveredFiles::Remove(const std::string& path) {
  std::error_code error;
  fs::remove(path, error);
}

void RecoveredFiles::Trim() const {
  std::error_code error;
  std::vector<std::pair<fs::file_time_type, fs::path>> copies;
  for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
    std::error_code unreadable;
    if (!at->is_regular_file(unreadable)) continue;
    copies.emplace_back(at->last_write_time(unreadable), at->path());
  }
  std::ranges::sort(copies, std::greater());
  for (std::size_t i = kMostCopies; i < copies.size(); ++i) fs::remove(copies[i].second, error);
}

}  // namespace oriolemark

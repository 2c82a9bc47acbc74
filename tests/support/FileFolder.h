#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

namespace oriolemark {

// A new folder for the files of one test, which anybody may write to.
struct FileFolder {
  FileFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "oriolemark.XXXXXX";
    folder = mkdtemp(pattern.data());
    chmod(folder.c_str(), 0777);
  }
  ~FileFolder() { std::filesystem::remove_all(folder); }
  FileFolder(const FileFolder&) = delete;
  FileFolder& operator=(const FileFolder&) = delete;

  static std::string Bytes(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  static void Put(const std::string& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
  }
  // Runs the action as the user "nobody", who has no rights of any kind.
  static void AsNobody(const std::function<void()>& action) {
    const uid_t self = geteuid();
    ASSERT_EQ(self == 0 ? seteuid(65534) : 0, 0);
    action();
    ASSERT_EQ(seteuid(self), 0);
  }

  std::string folder;
};

}  // namespace oriolemark

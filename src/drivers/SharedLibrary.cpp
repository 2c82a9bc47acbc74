#include "drivers/SharedLibrary.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

namespace oriolemark {
namespace {

bool IsPath(const std::string& name) {
  return name.find('/') != std::string::npos;
}

std::string Join(const std::vector<std::string>& words, const char* between) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
  return text;
}

// Returns true if the file is shorter than its header says, for instance after an interrupted copy.
// The loader would map the missing part, and the first access to it would crash the program.
bool IsCutShort(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  ElfW(Ehdr) header{};
  if (error || !file.read(reinterpret_cast<char*>(&header), sizeof header)) return false;
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return false;
  for (int i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) part{};
    file.seekg(static_cast<std::streamoff>(header.e_phoff) +
               std::streamoff{i} * header.e_phentsize);
    if (!file.read(reinterpret_cast<char*>(&part), sizeof part)) return true;
    if (part.p_type != PT_LOAD) continue;
    if (part.p_offset > size || part.p_filesz > size - part.p_offset) return true;
  }
  return false;
}

// The loader's own words. They begin with the name of the file that failed.
std::string LoaderWords(const std::string& name) {
  const char* const error = ::dlerror();
  std::string words = error != nullptr ? error : "cannot be loaded";
  if (!words.starts_with(name + ": ")) return words;
  words.erase(0, name.size() + 2);
  // If a dependency of the library is missing, the message begins with the dependency's name.
  return words.find(std::strerror(ENOENT)) != std::string::npos ? "not found" : words;
}

}  // namespace

SharedLibrary::SharedLibrary(const std::vector<std::string>& names, const Exports& required) {
  for (const std::string& name : names) {
    const std::string fault = TryToOpen(name, required);
    if (IsOpen()) return;
    reason_ += (reason_.empty() ? "" : "; ") + name + ": " + fault;
  }
}

SharedLibrary::~SharedLibrary() {
  Close();
}

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept {
  *this = std::move(other);
}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept {
  if (this == &other) return *this;
  Close();
  handle_ = std::exchange(other.handle_, nullptr);
  name_ = std::exchange(other.name_, {});
  reason_ = std::exchange(other.reason_, {});
  return *this;
}

std::string SharedLibrary::TryToOpen(const std::string& name, const Exports& required) {
  // An empty name would open the program itself. Opening a pipe would never return.
  if (name.empty()) return "empty name";
  std::error_code error;
  if (IsPath(name) && !std::filesystem::exists(name, error)) return "not found";
  if (IsPath(name) && !std::filesystem::is_regular_file(name, error)) return "not a file";
  if (IsPath(name) && IsCutShort(name)) return "incomplete file";
  // All symbols are bound now, so that a missing one is not found in the middle of a call.
  handle_ = ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (handle_ == nullptr) return LoaderWords(name);
  std::string missing = MissingOf(required);
  if (missing.empty()) {
    name_ = name;
  } else {
    Close();
    missing.insert(0, "lacks ");
  }
  return missing;
}

std::string SharedLibrary::MissingOf(const Exports& required) const {
  std::vector<std::string> missing;
  for (const auto& choice : required) {
    const bool found = std::any_of(choice.begin(), choice.end(), [this](const std::string& name) {
      return FindAddress(name.c_str()) != nullptr;
    });
    if (!found) missing.push_back(Join(choice, " or "));
  }
  return Join(missing, ", ");
}

void* SharedLibrary::FindAddress(const char* name) const {
  return handle_ != nullptr ? ::dlsym(handle_, name) : nullptr;
}

void SharedLibrary::Close() {
  if (handle_ != nullptr) ::dlclose(handle_);
  handle_ = nullptr;
  name_.clear();
}

}  // namespace oriolemark

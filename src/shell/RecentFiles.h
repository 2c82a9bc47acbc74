#pragma once

#include <array>
#include <memory>
#include <string>

#include "platform/MenuEntry.h"
#include "platform/SettingsStore.h"

namespace oriolemark {

// The last used files of one kind, newest first: four entries of a menu, kept in a section of the
// settings store. Every change is stored at once.
class RecentFiles {
 public:
  static constexpr std::size_t kEntries = 4;

  // `open` receives the path (UTF-8) of a clicked entry.
  RecentFiles(SettingsStore& store, std::string section, MenuEntry& root,
              std::function<void(const std::string& path)> open);

  // Puts the path at the top.
  void Add(const std::string& path);
  // Fills the menu from the store. Disables its root if there are no files.
  void Load();
  // Opens the newest file, if there is one.
  void OpenLatest() const {
    if (!paths_[0].empty()) entries_[0]->Click();
  }

 private:
  std::string Read(std::size_t index) const;
  void Write(std::size_t index, const std::string& path);

  SettingsStore& store_;
  const std::string section_;
  MenuEntry& root_;
  std::array<std::unique_ptr<MenuEntry>, kEntries> entries_;
  std::array<std::string, kEntries> paths_;
};

}  // namespace oriolemark

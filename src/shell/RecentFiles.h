#pragma once

#include <array>
#include <memory>
#include <string>

#include "platform/MenuEntry.h"
#include "platform/SettingsStore.h"

namespace oriolemark {

// The files of one kind that were used last, newest first: four entries of a menu, kept in a
// section of the settings store. What changes is stored at once.
class RecentFiles {
 public:
  static constexpr std::size_t kEntries = 4;

  // `open` gets the path (UTF-8) of an entry that is clicked.
  RecentFiles(SettingsStore& store, std::string section, MenuEntry& root,
              std::function<void(const std::string& path)> open);

  // Puts the path at the head.
  void Add(const std::string& path);
  // Fills the menu from the store. Without any file its root is disabled.
  void Load();
  // Empty where there is none.
  const std::string& Path(std::size_t index) const { return paths_[index]; }

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

#include "shell/RecentFiles.h"

#include <algorithm>
#include <utility>

namespace oriolemark {
namespace {

std::string KeyOf(std::size_t index) {
  return "RecentFile" + std::to_string(index + 1);
}

}  // namespace

RecentFiles::RecentFiles(SettingsStore& store, std::string section, MenuEntry& root,
                         std::function<void(const std::string& path)> open)
    : store_(store), section_(std::move(section)), root_(root) {
  for (std::size_t i = 0; i < kEntries; ++i) {
    // Copies the path, because opening it moves the entries.
    entries_[i] = std::make_unique<MenuEntry>("None", [this, i, open] {
      const std::string path = paths_[i];
      open(path);
    });
    entries_[i]->SetVisible(false);
    root_.submenu.push_back(entries_[i].get());
  }
  root_.SetEnabled(false);
}

std::string RecentFiles::Read(std::size_t index) const {
  return store_.Read(section_, KeyOf(index)).value_or("");
}

void RecentFiles::Write(std::size_t index, const std::string& path) {
  store_.Write(section_, KeyOf(index), path);
}

void RecentFiles::Add(const std::string& path) {
  const auto found = std::find(paths_.begin(), paths_.end(), path);
  const bool listed = found != paths_.end();
  // The entries above the path move down by one. For a new path all entries move down, and the last
  // one is dropped.
  const auto from = std::min<std::size_t>(found - paths_.begin(), kEntries - 1);
  for (std::size_t i = from; i > 0; --i) {
    const std::string above = Read(i - 1);
    if (listed || !above.empty()) Write(i, above);
  }
  Write(0, path);
  Load();
}

void RecentFiles::Load() {
  const bool any = !Read(0).empty();
  root_.SetEnabled(any);
  if (!any) return;
  for (std::size_t i = 0; i < kEntries; ++i) {
    paths_[i] = Read(i);
    entries_[i]->SetVisible(!paths_[i].empty());
    if (!paths_[i].empty()) entries_[i]->SetCaption(PlainCaption(paths_[i]));
  }
}

}  // namespace oriolemark

#pragma once

#include <QSettings>

#include "platform/SettingsStore.h"

namespace oriolemark {

// The INI file Oriolemark/Oriolemark.ini in the user's configuration folder. Texts are UTF-8 bytes.
// The program writes no text above 8 KiB. Such a text counts as missing and is removed by the next
// write. If the file is something else, such as a folder or a pipe, texts last until the program
// ends.
class QtSettingsStore : public SettingsStore {
 public:
  QtSettingsStore();
  std::optional<std::string> Read(const std::string& section, const std::string& key) override;
  void Write(const std::string& section, const std::string& key, const std::string& value) override;

 private:
  QSettings settings_;
};

}  // namespace oriolemark

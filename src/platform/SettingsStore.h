#pragma once

#include <optional>
#include <string>

namespace oriolemark {

// The user's own settings: texts under section and key, kept from run to run. A setting that cannot
// be read counts as missing. A setting that cannot be written is lost without a message.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::optional<std::string> Read(const std::string& section, const std::string& key) = 0;
  // Writes to the disk before it returns.
  virtual void Write(const std::string& section, const std::string& key,
                     const std::string& value) = 0;
};

}  // namespace oriolemark

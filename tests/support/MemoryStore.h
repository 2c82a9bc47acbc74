#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/SettingsStore.h"

namespace oriolemark {

// A settings store that forgets everything at the end of the test.
class MemoryStore : public SettingsStore {
 public:
  std::optional<std::string> Read(const std::string& section, const std::string& key) override {
    const auto found = values.find({section, key});
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  void Write(const std::string& section, const std::string& key,
             const std::string& value) override {
    values[{section, key}] = value;
  }
  std::map<std::pair<std::string, std::string>, std::string> values;
};

}  // namespace oriolemark

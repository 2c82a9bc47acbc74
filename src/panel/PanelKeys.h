#pragma once

#include <array>
#include <string>

namespace oriolemark {

enum class KeyRepeat { Once, WhileHeld };

// A key at the front of the instrument.
struct PanelKey {
  const char* control;  // its name in both windows, unless the last field has another one
  const char* keyword;
  const char* meaning;
  KeyRepeat repeat = KeyRepeat::Once;
  const char* panelControl = nullptr;  // its name in the virtual panel
};

// In the order of the names.
extern const std::array<PanelKey, 34> kPanelKeys;

// The command that presses the key.
std::string CommandOf(const PanelKey& key);

}  // namespace oriolemark

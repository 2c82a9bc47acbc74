#pragma once

#include "link/LinkState.h"
#include "platform/SettingsStore.h"
#include "platform/WindowUnits.h"
#include "transfers/RefreshLoop.h"

namespace oriolemark {

struct StartupSettings {
  bool StartupCheckHardware = false;
  bool StartupLoadSheet = false;
  bool StartupLoadCtrl = false;
};

// The user's choices that the program works with. The initial values are the defaults.
struct Preferences {
  StartupSettings startup;
  LinkSettings link;
  RefreshSettings refresh;
  UnitRect mainWindow{1000, 1000, 6500, 6500};
};

// A value that is missing or cannot be read keeps its default.
void LoadPreferences(SettingsStore& store, Preferences& preferences);

enum class WindowRows { Written, Skipped };
void SavePreferences(SettingsStore& store, const Preferences& preferences, WindowRows windowRows);

}  // namespace oriolemark

#pragma once

#include <string>

#include "controller/records/CtrlSettings.h"
#include "platform/WatchedFlag.h"

namespace oriolemark {

// The state of the control document, without its settings.
struct CtrlDocument {
  std::string CtrlFileName;     // path (UTF-8) of the file in use; empty for a new document
  WatchedFlag CtrlChanged;      // there are changes that are not in a file
  bool CtrlModelReady = false;  // the settings have been set to their defaults once
};

// Sets the values of a new control file. Fields that have none stay as they are.
void SetNewSettings(CtrlSettings& settings);

}  // namespace oriolemark

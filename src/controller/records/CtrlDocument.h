#pragma once

#include <string>

#include "controller/records/CtrlSettings.h"

namespace oriolemark {

// State of the control document beside its settings.
struct CtrlDocument {
  std::string CtrlFileName;     // path (UTF-8) of the file in use; empty for a new document
  bool CtrlChanged = false;     // there are changes that no file holds
  bool CtrlModelReady = false;  // the settings have had their defaults
};

// The settings of a new control file. What it assigns nothing to stays as it is.
void SetNewSettings(CtrlSettings& settings);

}  // namespace oriolemark

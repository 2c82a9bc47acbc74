#pragma once

#include <functional>

#include "controller/records/CtrlSettings.h"
#include "link/TX5000Cmd.h"
#include "platform/ProgressBar.h"
#include "platform/Waiting.h"

namespace oriolemark {

// Sends or reads all settings. The transfer window runs these exchanges. Window events are served
// after each step of the bar.
class SettingsTransfer {
 public:
  SettingsTransfer(CtrlSettings& settings, TX5000Cmd& scope, ProgressBar& bar, Waiting& waiting)
      : settings_(settings), scope_(scope), bar_(bar), waiting_(waiting) {}

  // Shows the settings again after they have been read.
  std::function<void()> buildCtrlTree;

  // Sends every setting, whatever the trigger method. Reads no reply.
  void WriteSettings();
  // Asks for every setting. A setting without a reply becomes empty.
  void ReadSettings();

 private:
  // Raises the bar by `steps` steps of size `step`.
  void Raise(double step, int steps);

  CtrlSettings& settings_;
  TX5000Cmd& scope_;
  ProgressBar& bar_;
  Waiting& waiting_;
};

}  // namespace oriolemark

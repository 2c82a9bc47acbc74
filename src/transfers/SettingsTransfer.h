#pragma once

#include <functional>

#include "controller/records/CtrlSettings.h"
#include "link/TX5000Cmd.h"
#include "platform/ProgressBar.h"
#include "platform/Waiting.h"

namespace oriolemark {

// The exchanges of all settings, each run by the transfer window. Window events are served after
// each step of the bar.
class SettingsTransfer {
 public:
  SettingsTransfer(CtrlSettings& settings, TX5000Cmd& scope, ProgressBar& bar, Waiting& waiting)
      : settings_(settings), scope_(scope), bar_(bar), waiting_(waiting) {}

  // Shows the settings anew after they have been read.
  std::function<void()> buildCtrlTree;

  // Sends every setting, whatever the method of the trigger. No reply is read.
  void WriteSettings();
  // Asks for every setting. One that gets no reply becomes empty.
  void ReadSettings();

 private:
  // Raises the bar by so many steps of this size.
  void Raise(double step, int steps);

  CtrlSettings& settings_;
  TX5000Cmd& scope_;
  ProgressBar& bar_;
  Waiting& waiting_;
};

}  // namespace oriolemark

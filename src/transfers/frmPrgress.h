#pragma once

#include <functional>
#include <string>

#include "link/LinkState.h"
#include "platform/Form.h"
#include "platform/ProgressBar.h"
#include "platform/ScreenPointer.h"
#include "platform/SettingsStore.h"
#include "platform/Timer.h"
#include "platform/Waiting.h"
#include "transfers/TransferState.h"

namespace oriolemark {

class TX5000Cmd;

// The transfer window's bar, as the procedures use it.
struct TransferProgress {
  ProgressBar& bar;
  double& Progress;  // the window's Timer2 copies it to the bar while it runs
  Timer& timer2;
};

// A long exchange, called with the channel of its kind of transfer, which is empty for settings.
using TransferProcedure = std::function<void(const std::string& channel)>;

struct TransferProcedures {
  TransferProcedure ReadMeasures;
  TransferProcedure ReadChannelData;
  TransferProcedure ReadWaveform;
  TransferProcedure WriteSettings;
  TransferProcedure ReadSettings;
};

// The transfer window. A request loads it. The exchange begins 100 ms after the load. The window
// unloads itself at the end. It cannot be cancelled or closed meanwhile.
class frmPrgress : public Form {
 public:
  frmPrgress(EventSource& events, Waiting& waiting, SettingsStore& store, LinkState& link,
             TransferState& transfer, TX5000Cmd& scope, ScreenPointer& pointer);

  // Size of the screen in window units. A saved position outside it is not used.
  double screenWidth = 0;
  double screenHeight = 0;

  TransferProcedures procedures;

  // Shows the window and waits. The caller must have tested that TransferActive is false. Returns
  // true when the transfer has ended, even if every query failed. Returns false if the program is
  // closing and no transfer took place.
  bool Transfer(oriolemark::TransferKind kind, const std::string& caption);

  TransferProgress Progressing() { return {ProgressBar1, Progress, Timer2}; }

  ProgressBar ProgressBar1;
  double Progress = 0;  // per cent
  Timer Timer1;
  Timer Timer2;

  void Form_Load() override;

 protected:
  bool Form_QueryUnload() override { return !transfer_.TransferActive; }
  void Form_Unload() override;

 private:
  void Timer1_Timer();
  void Run(bool running);
  void End();

  Waiting& waiting_;
  SettingsStore& store_;
  LinkState& link_;
  TransferState& transfer_;
  TX5000Cmd& scope_;
  ScreenPointer& pointer_;
};

}  // namespace oriolemark

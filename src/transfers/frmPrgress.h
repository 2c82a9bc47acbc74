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

// The bar of the transfer window as the procedures work it.
struct TransferProgress {
  ProgressBar& bar;
  double& Progress;  // copied to the bar by the window's Timer2 while that runs
  Timer& timer2;
};

// The long exchanges, each called with the channel of its kind of transfer.
struct TransferProcedures {
  std::function<void(const std::string& channel)> ReadMeasures;
  std::function<void(const std::string& channel)> ReadChannelData;
  std::function<void(const std::string& channel)> ReadWaveform;
  std::function<void()> WriteSettings;
  std::function<void()> ReadSettings;
};

// The transfer window. Loaded by a request, it begins 100 ms later, carries out one exchange with
// the instrument and unloads itself. It cannot be cancelled or closed meanwhile.
class frmPrgress : public Form {
 public:
  frmPrgress(EventSource& events, Waiting& waiting, SettingsStore& store, LinkState& link,
             TransferState& transfer, TX5000Cmd& scope, ScreenPointer& pointer);

  // Width and height of the screen in window units: where a saved position still counts.
  double screenWidth = 0;
  double screenHeight = 0;

  TransferProcedures procedures;

  // The requester's side: shows the window and waits. True when the transfer has ended, false when
  // the program is closing and none took place.
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

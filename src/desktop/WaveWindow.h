#pragma once

#include <QMdiSubWindow>

#include "waveview/frmWave.h"

namespace oriolemark {

// The child window of one wave view: controls at the left, the picture and its scroll bars beside
// them. Lives as long as the main window; the form shows and hides it.
class WaveWindow : public QMdiSubWindow {
 public:
  explicit WaveWindow(frmWave& form);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ShowForm();

  frmWave& form_;
};

}  // namespace oriolemark

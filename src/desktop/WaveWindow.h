#pragma once

#include "desktop/InnerWindow.h"
#include "waveview/frmWave.h"

namespace oriolemark {

// The child window of one wave view.
class WaveWindow : public InnerWindow {
 public:
  explicit WaveWindow(frmWave& form);
};

}  // namespace oriolemark

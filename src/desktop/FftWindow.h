#pragma once

#include "desktop/Dialogs.h"
#include "waveview/frmWaveSetting.h"

namespace oriolemark {

// The dialog that gives a waveform its spectrum trace.
class FftWindow : public FormDialog {
 public:
  FftWindow(frmWaveSetting& form, QWidget* parent);
};

}  // namespace oriolemark

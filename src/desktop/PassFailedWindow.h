#pragma once

#include "desktop/Dialogs.h"
#include "measure/frmPassFailed.h"

namespace oriolemark {

// The dialog with the limits of a measure item.
class PassFailedWindow : public FormDialog {
 public:
  PassFailedWindow(frmPassFailed& form, QWidget* parent);
};

}  // namespace oriolemark

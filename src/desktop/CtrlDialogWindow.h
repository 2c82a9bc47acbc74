#pragma once

#include "controller/CtrlDialog.h"
#include "desktop/Dialogs.h"

namespace oriolemark {

class CtrlDialogWindow : public FormDialog {
 public:
  CtrlDialogWindow(CtrlDialog& form, QWidget* parent);
};

}  // namespace oriolemark

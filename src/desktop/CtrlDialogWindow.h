#pragma once

#include "controller/CtrlDialog.h"
#include "desktop/Dialogs.h"

namespace oriolemark {

// The dialog that edits one setting. Its first control is the value.
class CtrlDialogWindow : public FormDialog {
 public:
  CtrlDialogWindow(CtrlDialog& form, QWidget* parent);
};

}  // namespace oriolemark

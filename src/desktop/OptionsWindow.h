#pragma once

#include "desktop/Dialogs.h"
#include "shell/frmOptions.h"

namespace oriolemark {

class OptionsWindow : public FormDialog {
 public:
  OptionsWindow(frmOptions& form, QWidget* parent);
};

}  // namespace oriolemark

#pragma once

#include "desktop/Dialogs.h"
#include "panel/frmV_Panel.h"

namespace oriolemark {

class PanelWindow : public FormDialog {
 public:
  PanelWindow(frmV_Panel& form, QWidget* parent);
};

}  // namespace oriolemark

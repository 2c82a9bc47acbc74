#pragma once

#include "desktop/Dialogs.h"
#include "panel/frmV_Key.h"

namespace oriolemark {

class KeyWindow : public FormDialog {
 public:
  KeyWindow(frmV_Key& form, QWidget* parent);
};

}  // namespace oriolemark

#pragma once

#include "desktop/InnerWindow.h"
#include "measure/frmMeasure.h"

namespace oriolemark {

// The child window of one measure view.
class MeasureWindow : public InnerWindow {
 public:
  explicit MeasureWindow(frmMeasure& form);
};

}  // namespace oriolemark

#pragma once

#include "datasheet/frmData.h"
#include "desktop/InnerWindow.h"

namespace oriolemark {

// The child window of one table of samples.
class DataWindow : public InnerWindow {
 public:
  explicit DataWindow(frmData& form);
};

}  // namespace oriolemark

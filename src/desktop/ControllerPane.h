#pragma once

#include <QWidget>

#include "controller/frmCtrlList.h"

namespace oriolemark {

// The inside of the Controller's pane: Upload and Download above the tree.
class ControllerPane : public QWidget {
 public:
  explicit ControllerPane(frmCtrlList& form);
};

}  // namespace oriolemark

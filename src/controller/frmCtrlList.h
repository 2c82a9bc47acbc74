#pragma once

#include "platform/Form.h"
#include "platform/TreeView.h"

namespace oriolemark {

// The Controller's pane: the instrument's settings as a tree.
class frmCtrlList : public Form {
 public:
  frmCtrlList() { SetCaption("DSO Controller"); }

  TreeView CtrlTreeView;
};

}  // namespace oriolemark

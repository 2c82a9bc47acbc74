#pragma once

#include <string>

#include "platform/TreeView.h"

namespace oriolemark {

// What the items of all kinds have in common.
struct ItemRecord {
  std::string Name;
  bool HasData = false;   // a transfer or a file has filled the item
  bool ViewOpen = false;  // the view of this slot is loaded; run-time only
  oriolemark::TreeNode TreeNode = kNoNode;
};

}  // namespace oriolemark

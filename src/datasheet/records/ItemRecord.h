#pragma once

#include <string>

#include "platform/TreeView.h"

namespace oriolemark {

// The fields of an item of any kind.
struct ItemRecord {
  std::string Name;
  bool HasData = false;   // a transfer or a file has filled the item
  bool ViewOpen = false;  // the view of this slot is loaded; run-time only
  oriolemark::TreeNode TreeNode = kNoNode;

  bool operator==(const ItemRecord&) const = default;
};

}  // namespace oriolemark

#pragma once

#include <QWidget>

#include "datasheet/frmDataSheetTree.h"

namespace oriolemark {

// The inside of the Data Browser's pane: the tree of the data sheet with its menu.
class DataBrowserPane : public QWidget {
 public:
  explicit DataBrowserPane(frmDataSheetTree& form);
};

}  // namespace oriolemark

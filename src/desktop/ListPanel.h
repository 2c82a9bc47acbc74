#pragma once

#include "desktop/InnerWindow.h"
#include "platform/Label.h"

class QHBoxLayout;
class QTableView;
class QVBoxLayout;

namespace oriolemark {

// The inside of a view that shows its record as a list: the controls in a row, the record's title,
// and the list.
class ListPanel : public ReadingPanel {
 protected:
  explicit ListPanel(ReadingView& form);

  // Adds the title and the list below the controls. Called after the buttons have been added, so
  // that Tab visits them first.
  void AddList(Label& title, QTableView& list);

  // The row of controls. Buttons go to its right end.
  QHBoxLayout& bar_;

 private:
  QVBoxLayout& column_;
};

}  // namespace oriolemark

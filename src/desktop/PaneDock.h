#pragma once

#include <QDockWidget>

#include "platform/TabDock.h"

namespace oriolemark {

// One docked pane. Its form shows and hides it. When the user closes the pane, the form is hidden.
class PaneDock : public QDockWidget {
 public:
  PaneDock(TabDock& dock, const TabDock::Pane& pane, QWidget* content, QWidget* parent);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  TabDock& dock_;
  const TabDock::Pane pane_;
};

}  // namespace oriolemark

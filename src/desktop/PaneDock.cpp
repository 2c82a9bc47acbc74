#include "desktop/PaneDock.h"

#include <QCloseEvent>

#include "desktop/Bind.h"

namespace oriolemark {

PaneDock::PaneDock(TabDock& dock, const TabDock::Pane& pane, QWidget* content, QWidget* parent)
    : QDockWidget(parent), dock_(dock), pane_(pane) {
  setObjectName("dock_" + FromWire(pane.key));
  setWidget(content);
  // A floating pane is a window of its own.
  setAcceptDrops(true);
  Follow(*this, *pane.form);
  pane.form->onChanged();
}

void PaneDock::closeEvent(QCloseEvent* event) {
  event->ignore();
  dock_.HidePane(pane_.key);
}

}  // namespace oriolemark

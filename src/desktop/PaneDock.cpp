#include "desktop/PaneDock.h"

#include <QCloseEvent>
#include <QPointer>

#include "desktop/Bind.h"

namespace oriolemark {

PaneDock::PaneDock(TabDock& dock, const TabDock::Pane& pane, QWidget* content, QWidget* parent)
    : QDockWidget(parent), dock_(dock), pane_(pane) {
  Form& form = *pane.form;
  setObjectName("dock_" + FromWire(pane.key));
  setWidget(content);
  const QPointer<PaneDock> guard(this);
  form.onChanged = [guard] {
    if (guard) guard->ShowForm();
  };
  form.onFront = [guard] {
    if (guard) guard->raise();
  };
  form.onRepaint = [guard] {
    if (guard) guard->repaint();
  };
  ShowForm();
}

void PaneDock::closeEvent(QCloseEvent* event) {
  event->ignore();
  dock_.HidePane(pane_.key);
}

void PaneDock::ShowForm() {
  const Form& form = *pane_.form;
  ShowTitle(*this, form);
  if (isHidden() == form.Visible()) setVisible(form.Visible());
}

}  // namespace oriolemark

#include "desktop/PaneDock.h"

#include <QCloseEvent>
#include <QPointer>

#include "desktop/Bind.h"

namespace oriolemark {

PaneDock::PaneDock(Form& form, const QString& key, QWidget* content, QWidget* parent)
    : QDockWidget(parent), form_(form) {
  setObjectName("dock_" + key);
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
  form_.Hide();
}

void PaneDock::ShowForm() {
  setWindowTitle(FromWire(form_.Caption()));
  if (isHidden() == form_.Visible()) setVisible(form_.Visible());
}

}  // namespace oriolemark

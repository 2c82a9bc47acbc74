#include "desktop/KeyWindow.h"

#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/PanelFront.h"

namespace oriolemark {

KeyWindow::KeyWindow(frmV_Key& form, QWidget* parent) : FormDialog(form, "frmV_Key", parent) {
  auto& layout = Make<QVBoxLayout>(this);
  layout.setSizeConstraint(QLayout::SetFixedSize);
  layout.addWidget(&Make<PanelFront>(form.Keys, FrontOf::KeyWindow, *this));
}

}  // namespace oriolemark

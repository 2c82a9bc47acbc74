#pragma once

#include "controller/CtrlDialog.h"
#include "desktop/Dialogs.h"

class QComboBox;
class QLineEdit;

namespace oriolemark {

// The edit of one setting. It opens with the focus on the value.
class CtrlDialogWindow : public FormDialog {
 public:
  CtrlDialogWindow(CtrlDialog& form, QWidget* parent);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QComboBox& combo_;
  QLineEdit& input_;
};

}  // namespace oriolemark

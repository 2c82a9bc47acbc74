#pragma once

#include <QDockWidget>

#include "platform/Form.h"

namespace oriolemark {

// One docked pane. The form decides whether it shows; the user's close hides the form.
class PaneDock : public QDockWidget {
 public:
  PaneDock(Form& form, const QString& key, QWidget* content, QWidget* parent);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ShowForm();

  Form& form_;
};

}  // namespace oriolemark

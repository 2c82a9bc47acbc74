#pragma once

#include <QDialog>
#include <QString>

#include "datasheet/DocTypeDialog.h"
#include "shell/frmAbout.h"
#include "shell/frmSplash.h"
#include "transfers/frmPrgress.h"

namespace oriolemark {

// A separate window that a form shows and hides. When the user closes it, the form decides.
class FormDialog : public QDialog {
 public:
  FormDialog(Form& form, const QString& name, QWidget* parent);

  void reject() override;

 protected:
  // Sets the focus to the first control each time, because the window is reused.
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  void ShowForm();

  Form& form_;
};

class SplashWindow : public FormDialog {
 public:
  explicit SplashWindow(frmSplash& form);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  frmSplash& splash_;
};

class AboutWindow : public FormDialog {
 public:
  AboutWindow(frmAbout& form, QWidget* parent);
};

class DocTypeWindow : public FormDialog {
 public:
  DocTypeWindow(DocTypeDialog& form, const QString& name, QWidget* parent);
};

class ProgressWindow : public FormDialog {
 public:
  ProgressWindow(frmPrgress& form, QWidget* parent);
};

}  // namespace oriolemark

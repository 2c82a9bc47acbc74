#pragma once

#include <QMdiSubWindow>
#include <QWidget>

#include "transfers/ReadingView.h"

class QBoxLayout;

namespace oriolemark {

// The inside of a view's child window. Reports its size and the key F5 to the view.
class ReadingPanel : public QWidget {
 public:
  explicit ReadingPanel(ReadingView& form) : form_(form) {}

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  // Adds the button that refreshes the view.
  void AddRefresh(QBoxLayout& layout);
  // Adds the channel options that the view has.
  void AddChannels(QBoxLayout& layout);

 private:
  ReadingView& form_;
};

// A child window of the main window. It exists as long as the main window. Its form shows and hides
// it.
class InnerWindow : public QMdiSubWindow {
 public:
  InnerWindow(Form& form, const QString& name, const QString& picture, QWidget& panel);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BringToFront();

  Form& form_;
};

}  // namespace oriolemark

#pragma once

#include <QMainWindow>
#include <vector>

#include "shell/frmMain.h"

class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QToolBar;

namespace oriolemark {

class InnerWindow;

// The main window: menus, toolbar with the connection lamps, docked panes, status bar, and the area
// of the child windows.
class MainWindow : public QMainWindow {
 public:
  MainWindow(frmMain& form, frmDataSheetTree& browser, frmCtrlList& controller);

  // Adds a child window. It is hidden until its form is shown.
  void AddInner(InnerWindow& window);

  bool eventFilter(QObject* watched, QEvent* event) override;
  // The toolkit's menu would show and hide bars and panes without changing their models.
  QMenu* createPopupMenu() override { return nullptr; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildMenus();
  void AddPaneKeys();
  // The next part of the window that can take the focus: toolbar, panes, child windows.
  void GoToPart(int step);
  bool EnterPart(QWidget& part);
  void BuildToolBar();
  void AddTool(const frmMain::Tool& tool, Button& model);
  void AddLamp(const char* name, const QString& picture, Lamp& model);
  void PlaceLamps();
  void BuildFirstSteps();
  void PlaceFirstSteps();
  void BuildStatusBar();
  void AddPanes();
  QWidget* MakePaneContent(const Form& form);
  void FollowForm();
  void ShowForm();
  void ApplyPlace();
  void ShowTime();
  void Arrange(Arrangement arrangement);

  frmMain& form_;
  frmDataSheetTree& browser_;
  frmCtrlList& controller_;
  QMdiArea& area_;
  QToolBar& toolBar_;
  QLabel& firstSteps_;
  QLabel& date_;
  QLabel& time_;
  std::size_t panes_ = 0;  // the number of panes that have a dock
};

}  // namespace oriolemark

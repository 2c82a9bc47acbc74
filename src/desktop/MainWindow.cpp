#include "desktop/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDate>
#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QScreen>
#include <QStatusBar>
#include <QTime>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>

#include "desktop/Bind.h"
#include "desktop/Icons.h"
#include "desktop/PaneDock.h"
#include "desktop/TreeBinding.h"
#include "desktop/WaveWindow.h"
#include "platform/Rounding.h"

namespace oriolemark {
namespace {

constexpr int kSecond = 1000;
constexpr UnitRect kIconSize{.width = 160, .height = 32};  // pixels

struct MenuName {
  MenuEntry frmMain::*entry;
  const char* name;
  const char* keys;
};

const MenuName kMenuNames[] = {
    {&frmMain::mnuFileNew, "mnuFileNew", "Ctrl+N"},
    {&frmMain::mnuFileOpen, "mnuFileOpen", "Ctrl+O"},
    {&frmMain::mnuFileSaveDataSheet, "mnuFileSaveDataSheet", "Ctrl+S"},
    {&frmMain::mnuFileSaveCtrlFile, "mnuFileSaveCtrlFile", ""},
    {&frmMain::mnuFileSaveAll, "mnuFileSaveAll", "Ctrl+Shift+S"},
    {&frmMain::mnuFilePageSetup, "mnuFilePageSetup", ""},
    {&frmMain::mnuRecentCtrlRoot, "mnuRecentCtrlRoot", ""},
    {&frmMain::mnuRecentSheetRoot, "mnuRecentSheetRoot", ""},
    {&frmMain::mnuFileExit, "mnuFileExit", "Ctrl+Q"},
    {&frmMain::mnuViewToolbar, "mnuViewToolbar", ""},
    {&frmMain::mnuViewStatusBar, "mnuViewStatusBar", ""},
    {&frmMain::mnuViewController, "mnuViewController", ""},
    {&frmMain::mnuViewDataBrowser, "mnuViewDataBrowser", ""},
    {&frmMain::mnuToolsConnect, "mnuToolsConnect", ""},
    {&frmMain::mnuToolsDisconnect, "mnuToolsDisconnect", ""},
    {&frmMain::mnuToolsOptions, "mnuToolsOptions", ""},
    {&frmMain::mnuWindowCascade, "mnuWindowCascade", ""},
    {&frmMain::mnuWindowTileHorizontal, "mnuWindowTileHorizontal", ""},
    {&frmMain::mnuWindowTileVertical, "mnuWindowTileVertical", ""},
    {&frmMain::mnuWindowArrangeIcons, "mnuWindowArrangeIcons", ""},
    {&frmMain::mnuHelpContents, "mnuHelpContents", "F1"},
    {&frmMain::mnuHelpSearchForHelpOn, "mnuHelpSearchForHelpOn", ""},
    {&frmMain::mnuHelpAbout, "mnuHelpAbout", ""},
};

// Pictures of the trees, by image from 1 on.
const QStringList kSheetPictures{"TreeRoot", "TreeSheet", "Wave", "Measure", "Data"};
const QStringList kControllerPictures{"Controller", "TreeRoot", "TreeLeaf",
                                      "TreeAction", "",         "Setting"};

// Moved, and only then made smaller, as far as the screen asks for it.
QRect ClampInto(const QRect& screen, QRect place) {
  place.setSize(place.size().boundedTo(screen.size()));
  place.moveLeft(std::clamp(place.x(), screen.x(), screen.right() + 1 - place.width()));
  place.moveTop(std::clamp(place.y(), screen.y(), screen.bottom() + 1 - place.height()));
  return place;
}

}  // namespace

MainWindow::MainWindow(frmMain& form, frmDataSheetTree& browser, frmCtrlList& controller)
    : form_(form),
      browser_(browser),
      controller_(controller),
      area_(Make<QMdiArea>()),
      toolBar_(Make<QToolBar>("Toolbar", this)),
      date_(Make<QLabel>()),
      time_(Make<QLabel>()) {
  setObjectName("frmMain");
  setWindowIcon(PictureNamed("Oriolemark"));
  area_.setObjectName("MdiArea");
  area_.setAccessibleName("Windows");
  setCentralWidget(&area_);
  area_.installEventFilter(this);
  addToolBar(&toolBar_);
  BuildMenus();
  BuildStatusBar();
  Follow();
}

void MainWindow::AddWaveView(frmWave& view) {
  auto& window = Make<WaveWindow>(view);
  area_.addSubWindow(&window);
  window.hide();
}

void MainWindow::BuildMenus() {
  for (const frmMain::Menu& menu : form_.MenuBar()) {
    QMenu& shown = *menuBar()->addMenu(FromWire(menu.caption));
    for (MenuEntry* entry : menu.entries) {
      if (entry == nullptr) {
        shown.addSeparator();
        continue;
      }
      auto& action = Make<QAction>(this);
      shown.addAction(&action);
      Bind(action, *entry);
      for (const MenuName& row : kMenuNames) {
        if (&(form_.*row.entry) != entry) continue;
        action.setObjectName(row.name);
        action.setShortcut(QKeySequence(row.keys));
      }
    }
  }
}

void MainWindow::BuildToolBar() {
  if (!toolBar_.actions().isEmpty() || form_.Tools.empty()) return;
  toolBar_.setMovable(false);
  toolBar_.setContextMenuPolicy(Qt::PreventContextMenu);
  for (std::size_t place = 0; place < form_.Tools.size(); ++place) {
    AddTool(form_.Tools[place], form_.ToolButtons[place]);
  }
  auto& gap = Make<QWidget>();
  gap.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  toolBar_.addWidget(&gap);
  AddLamp("picLED_ON", "LedOn", form_.picLED_ON);
  AddLamp("picLED_OFF", "LedOff", form_.picLED_OFF);
}

void MainWindow::AddTool(const frmMain::Tool& tool, Button& model) {
  if (tool.key.empty()) {
    toolBar_.addSeparator();
    return;
  }
  auto& button = Make<QToolButton>();
  Name(button, ("tool_" + tool.key).c_str(), FromWire(tool.toolTip));
  button.setToolTip(FromWire(tool.toolTip));
  button.setIcon(PictureNamed(FromWire(tool.image)));
  button.setIconSize({24, 24});
  button.setAutoRaise(true);
  toolBar_.addWidget(&button);
  Bind(button, model);
}

void MainWindow::AddLamp(const char* name, const QString& picture, Lamp& model) {
  auto& lamp = Make<QLabel>();
  Name(lamp, name, FromWire(model.ToolTip));
  lamp.setToolTip(FromWire(model.ToolTip));
  lamp.setPixmap(PictureNamed(picture).pixmap(20, 20));
  // A widget in a toolbar shows and hides by the action that stands for it.
  QAction& holder = *toolBar_.addWidget(&lamp);
  const QPointer<QAction> guard(&holder);
  model.onChanged = [guard, &model] {
    if (guard) guard->setVisible(model.Visible());
  };
  model.onChanged();
}

void MainWindow::BuildStatusBar() {
  auto& text = Make<QLabel>();
  text.setTextFormat(Qt::PlainText);
  text.setObjectName("Status");
  date_.setObjectName("Date");
  time_.setObjectName("Time");
  statusBar()->setObjectName("sbrStatus");
  statusBar()->addWidget(&text, 1);
  statusBar()->addPermanentWidget(&date_);
  statusBar()->addPermanentWidget(&time_);
  const QPointer<QLabel> guard(&text);
  form_.StatusPanel.onChanged = [guard, this] {
    if (guard) guard->setText(FromWire(form_.StatusPanel.Text()));
  };
  form_.StatusPanel.onChanged();
  auto& clock = Make<QTimer>(this);
  connect(&clock, &QTimer::timeout, this, [this] { ShowTime(); });
  clock.start(kSecond);
  ShowTime();
}

void MainWindow::ShowTime() {
  const QLocale locale = QLocale::system();
  date_.setText(locale.toString(QDate::currentDate(), QLocale::ShortFormat));
  time_.setText(locale.toString(QTime::currentTime(), QLocale::ShortFormat));
}

QWidget* MainWindow::MakePaneTree(const Form& form) {
  auto& tree = Make<QTreeWidget>();
  const bool sheet = &form == &browser_;
  Name(tree, sheet ? "DataSheetTree" : "CtrlTreeView", FromWire(form.Caption()));
  Make<TreeBinding>(tree, sheet ? browser_.DataSheetTree : controller_.CtrlTreeView,
                    sheet ? kSheetPictures : kControllerPictures);
  return &tree;
}

void MainWindow::AddPanes() {
  const std::vector<TabDock::Pane>& panes = form_.tabDock.Panes();
  for (; panes_ < panes.size(); ++panes_) {
    const TabDock::Pane& pane = panes[panes_];
    auto& dock = Make<PaneDock>(*pane.form, FromWire(pane.key), MakePaneTree(*pane.form), this);
    addDockWidget(Qt::LeftDockWidgetArea, &dock);
    dock.setVisible(pane.form->Visible());
  }
  const QList<QDockWidget*> docks = findChildren<QDockWidget*>();
  const int width = RoundToInt(UnitsToPixels(form_.tabDock.BandWidth()));
  if (width > 0) resizeDocks(docks, QList<int>(docks.size(), width), Qt::Horizontal);
}

void MainWindow::Follow() {
  const QPointer<MainWindow> guard(this);
  const auto guarded = [guard](auto member) {
    return [guard, member] {
      if (guard) (guard->*member)();
    };
  };
  form_.onChanged = guarded(&MainWindow::ShowForm);
  form_.onMoved = guarded(&MainWindow::ApplyPlace);
  form_.onFront = guarded(&QWidget::raise);
  form_.onRepaint = [guard] {
    if (guard) guard->repaint();
  };
  form_.tabDock.onChanged = guarded(&MainWindow::AddPanes);
  form_.onArrange = [guard](Arrangement arrangement) {
    if (guard) guard->Arrange(arrangement);
  };
  Bind(static_cast<QWidget&>(toolBar_), form_.tbToolBar);
  Bind(static_cast<QWidget&>(*statusBar()), form_.sbrStatus);
  toolBar_.setObjectName("tbToolBar");
  BuildToolBar();
  AddPanes();
}

void MainWindow::ShowForm() {
  BuildToolBar();
  setWindowTitle(FromWire(form_.Caption()));
  if (isHidden() == form_.Visible()) setVisible(form_.Visible());
}

void MainWindow::ApplyPlace() {
  const QRect place =
      ClampInto(QGuiApplication::primaryScreen()->availableGeometry(), ToPixels(form_.Place()));
  move(place.topLeft());
  resize(place.size());
}

// Icons and open windows are arranged apart.
void MainWindow::Arrange(Arrangement arrangement) {
  QList<QMdiSubWindow*> windows = area_.subWindowList(QMdiArea::StackingOrder);
  const bool icons = arrangement == Arrangement::ArrangeIcons;
  windows.removeIf([icons](const QMdiSubWindow* window) {
    return window->isHidden() || window->isMinimized() != icons;
  });
  const std::vector<UnitRect> places =
      ArrangeWindows(arrangement, area_.viewport()->width(), area_.viewport()->height(),
                     static_cast<int>(windows.size()), kIconSize);
  for (std::size_t i = 0; i < places.size(); ++i) {
    QMdiSubWindow& window = *windows[static_cast<qsizetype>(i)];
    if (window.isMaximized()) window.showNormal();
    const UnitRect& place = places[i];
    window.setGeometry(RoundToInt(place.left), RoundToInt(place.top), RoundToInt(place.width),
                       RoundToInt(place.height));
  }
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &area_ && event->type() == QEvent::Resize) {
    form_.NoteInnerSize(PixelsToUnits(area_.width()), PixelsToUnits(area_.height()));
  }
  return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  form_.Close();
}

void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) form_.Minimised = isMinimized();
  QMainWindow::changeEvent(event);
}

void MainWindow::moveEvent(QMoveEvent*) {
  form_.NotePlace(ToUnits(QRect(pos(), size())));
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  form_.NotePlace(ToUnits(QRect(pos(), size())));
}

}  // namespace oriolemark

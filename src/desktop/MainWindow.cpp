#include "desktop/MainWindow.h"

#include <QAction>
#include <QApplication>
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
#include <QShortcut>
#include <QStatusBar>
#include <QTime>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>

#include "desktop/Bind.h"
#include "desktop/Builders.h"
#include "desktop/ControllerPane.h"
#include "desktop/DataBrowserPane.h"
#include "desktop/DropTarget.h"
#include "desktop/Icons.h"
#include "desktop/InnerWindow.h"
#include "desktop/Menus.h"
#include "desktop/PaneDock.h"
#include "desktop/ShownText.h"
#include "platform/Rounding.h"

namespace oriolemark {
namespace {

constexpr int kSecond = 1000;
constexpr int kFramePatience = 200;  // ms to wait for the desktop's window frame
constexpr int kLampRoom = 28;        // pixels at the right end of the toolbar
constexpr UnitRect kIconSize{.width = 2400, .height = 480};

// A lamp's outline is drawn anew with each theme.
class LampLabel : public QLabel {
 public:
  explicit LampLabel(const QString& picture) : picture_(PictureNamed(picture)) {
    setAlignment(Qt::AlignCenter);
    ShowPicture();
  }

 protected:
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) ShowPicture();
    QLabel::changeEvent(event);
  }

 private:
  void ShowPicture() { setPixmap(picture_.pixmap(20, 20)); }

  QIcon picture_;
};

// The screen at the middle of the place. If no screen is there, the primary screen.
QRect ScreenAt(const QRect& place) {
  const QScreen* screen = QGuiApplication::screenAt(place.center());
  return (screen != nullptr ? screen : QGuiApplication::primaryScreen())->availableGeometry();
}

// Moves the place into the screen, and makes it smaller only if it is larger than the screen.
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
      firstSteps_(Make<QLabel>(&area_)),
      date_(Make<QLabel>()),
      time_(Make<QLabel>()) {
  setObjectName("frmMain");
  setWindowIcon(PictureNamed("Oriolemark"));
  area_.setObjectName("MdiArea");
  area_.setAccessibleName("Windows");
  area_.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setCentralWidget(&area_);
  area_.installEventFilter(this);
  addToolBar(&toolBar_);
  BuildMenus();
  BuildStatusBar();
  BuildFirstSteps();
  AddPaneKeys();
  Make<DropTarget>(*this, frmMain::TakesDrop,
                   [this](const DropTarget::Paths& paths) { form_.OpenDropped(paths); });
  FollowForm();
}

void MainWindow::AddInner(InnerWindow& window) {
  window.resize(
      window.size().boundedTo(area_.maximumViewportSize()).expandedTo(window.minimumSizeHint()));
  area_.addSubWindow(&window);
  // Otherwise the title of a window wider than the area would be beyond the left edge.
  window.move(std::max(0, window.x()), std::max(0, window.y()));
  window.hide();
}

void MainWindow::BuildMenus() {
  for (const frmMain::Menu& menu : form_.MenuBar) {
    FillMenu(*menuBar()->addMenu(FromWire(menu.caption)), menu.entries);
  }
}

// Tab stays inside a child window, so these keys move to the next part of the main window.
void MainWindow::AddPaneKeys() {
  const auto add = [this](const char* keys, int step) {
    auto& shortcut = Make<QShortcut>(QKeySequence(keys), this);
    connect(&shortcut, &QShortcut::activated, this, [this, step] { GoToPart(step); });
  };
  add("F6", 1);
  add("Shift+F6", -1);
}

void MainWindow::GoToPart(int step) {
  QWidgetList parts{&toolBar_};
  for (QTreeWidget* tree : findChildren<QTreeWidget*>()) parts << tree;
  parts << &area_;
  const auto holdsFocus = [](const QWidget* part) {
    const QWidget* focus = QApplication::focusWidget();
    return focus != nullptr && (part == focus || part->isAncestorOf(focus));
  };
  const qsizetype count = parts.size();
  const auto from = std::find_if(parts.begin(), parts.end(), holdsFocus);
  qsizetype at = from == parts.end() ? 0 : from - parts.begin();
  for (qsizetype tried = 0; tried < count; ++tried) {
    at = (at + step + count) % count;
    if (EnterPart(*parts[at])) return;
  }
}

bool MainWindow::EnterPart(QWidget& part) {
  QWidget* target = &part;
  if (&part == &toolBar_) target = toolBar_.findChild<QToolButton*>("tool_New");
  if (&part == &area_) {
    QMdiSubWindow* window = area_.activeSubWindow();
    if (window == nullptr) return false;
    window->setFocus(Qt::ShortcutFocusReason);
    return true;
  }
  if (target == nullptr || !target->isVisible()) return false;
  target->setFocus(Qt::ShortcutFocusReason);
  return true;
}

void MainWindow::BuildToolBar() {
  if (!toolBar_.actions().isEmpty() || form_.Tools.empty()) return;
  toolBar_.setMovable(false);
  toolBar_.setContextMenuPolicy(Qt::PreventContextMenu);
  for (std::size_t place = 0; place < form_.Tools.size(); ++place) {
    AddTool(form_.Tools[place], form_.ToolButtons[place]);
  }
  if (auto* more = toolBar_.findChild<QToolButton*>("qt_toolbar_ext_button")) {
    more->setAccessibleName("More tools");
    more->setFocusPolicy(Qt::TabFocus);
  }
  toolBar_.setContentsMargins(0, 0, kLampRoom, 0);
  toolBar_.installEventFilter(this);
  AddLamp("picLED_ON", "LedOn", form_.picLED_ON);
  AddLamp("picLED_OFF", "LedOff", form_.picLED_OFF);
}

void MainWindow::AddTool(const frmMain::Tool& tool, Button& model) {
  if (tool.key.empty()) {
    toolBar_.addSeparator();
    return;
  }
  const QString toolTip = FromWire(tool.toolTip);
  toolBar_.addWidget(&MakeToolButton(toolBar_, "tool_" + FromWire(tool.key), toolTip, toolTip,
                                     FromWire(tool.image), model));
}

void MainWindow::AddLamp(const char* name, const QString& picture, Lamp& model) {
  auto& lamp = Make<LampLabel>(picture);
  Name(lamp, name, FromWire(model.ToolTip));
  lamp.setToolTip(FromWire(model.ToolTip));
  // The lamp is placed on the toolbar but is not one of its tools. A narrow bar moves tools without
  // space into its menu.
  lamp.setParent(&toolBar_);
  const QPointer<QLabel> guard(&lamp);
  model.onChanged = [guard, &model] {
    if (guard) guard->setVisible(model.Visible());
  };
  model.onChanged();
}

void MainWindow::PlaceLamps() {
  for (QLabel* lamp : toolBar_.findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
    lamp->setGeometry(toolBar_.width() - kLampRoom, 0, kLampRoom, toolBar_.height());
  }
}

// A sheet in the middle of the area that takes neither the mouse nor the focus.
void MainWindow::BuildFirstSteps() {
  constexpr int kMargin = 16;
  firstSteps_.setObjectName("FirstSteps");
  firstSteps_.setTextFormat(Qt::PlainText);
  firstSteps_.setText(QString::fromStdString(form_.FirstSteps.Text()));
  firstSteps_.setWordWrap(true);
  firstSteps_.setMargin(kMargin);
  firstSteps_.setFrameShape(QFrame::StyledPanel);
  firstSteps_.setBackgroundRole(QPalette::Window);
  firstSteps_.setForegroundRole(QPalette::WindowText);
  firstSteps_.setAutoFillBackground(true);
  firstSteps_.setAttribute(Qt::WA_TransparentForMouseEvents);
  Bind(static_cast<QWidget&>(firstSteps_), form_.FirstSteps);
}

// As wide as its longest line if there is room, otherwise with wrapped lines.
void MainWindow::PlaceFirstSteps() {
  const QSize room = area_.size();
  const int text = firstSteps_.fontMetrics().size(0, firstSteps_.text()).width();
  const int edges = 2 * (firstSteps_.margin() + firstSteps_.frameWidth());
  const int width = std::min(text + edges, room.width());
  const int height = std::min(firstSteps_.heightForWidth(width), room.height());
  firstSteps_.setGeometry((room.width() - width) / 2, (room.height() - height) / 2, width, height);
}

void MainWindow::BuildStatusBar() {
  auto& text = Make<QLabel>();
  text.setTextFormat(Qt::PlainText);
  text.setObjectName("Status");
  // A long text does not widen the window.
  text.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  date_.setObjectName("Date");
  time_.setObjectName("Time");
  statusBar()->setObjectName("sbrStatus");
  statusBar()->addWidget(&text, 1);
  statusBar()->addPermanentWidget(&date_);
  statusBar()->addPermanentWidget(&time_);
  const QPointer<QLabel> guard(&text);
  form_.StatusPanel.onChanged = [guard, this] {
    if (guard) guard->setText(Shortened(FromWire(form_.StatusPanel.Text())));
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

QWidget* MainWindow::MakePaneContent(const Form& form) {
  if (&form == &controller_) return &Make<ControllerPane>(controller_);
  return &Make<DataBrowserPane>(browser_);
}

void MainWindow::AddPanes() {
  const std::vector<TabDock::Pane>& panes = form_.tabDock.Panes();
  for (; panes_ < panes.size(); ++panes_) {
    const TabDock::Pane& pane = panes[panes_];
    auto& dock = Make<PaneDock>(form_.tabDock, pane, MakePaneContent(*pane.form), this);
    addDockWidget(Qt::LeftDockWidgetArea, &dock);
    dock.setVisible(pane.form->Visible());
  }
  const QList<QDockWidget*> docks = findChildren<QDockWidget*>();
  const int width = RoundToInt(UnitsToPixels(form_.tabDock.BandWidth()));
  if (width > 0) resizeDocks(docks, QList<int>(docks.size(), width), Qt::Horizontal);
  // Panes above each other get equal heights.
  resizeDocks(docks, QList<int>(docks.size(), height()), Qt::Vertical);
}

void MainWindow::FollowForm() {
  Follow(*this, form_, {.show = [this] { ShowForm(); }, .place = [this] { ApplyPlace(); }});
  const QPointer<MainWindow> guard(this);
  form_.tabDock.onChanged = [guard] {
    if (guard) guard->AddPanes();
  };
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
  ShowTitle(*this, form_);
  if (isHidden() != form_.Visible()) return;
  setVisible(form_.Visible());
  if (!form_.Visible()) return;
  QTimer::singleShot(kFramePatience, this, [this] {
    if (windowState() == Qt::WindowNoState) ApplyPlace();
  });
}

void MainWindow::ApplyPlace() {
  // The desktop's frame takes space too, once it is there.
  const QRect asked = ToPixels(form_.Place());
  QRect screen = ScreenAt(asked);
  screen.setSize(screen.size() - (frameGeometry().size() - size()));
  const QRect place = ClampInto(screen, asked);
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
  // The scroll bars disappear when all windows are inside the area.
  const UnitRect room = ToUnits({QPoint(), area_.maximumViewportSize()});
  const std::vector<UnitRect> places = ArrangeWindows(arrangement, room.width, room.height,
                                                      static_cast<int>(windows.size()), kIconSize);
  for (std::size_t i = 0; i < places.size(); ++i) {
    QMdiSubWindow& window = *windows[static_cast<qsizetype>(i)];
    if (window.isMaximized()) window.showNormal();
    const QRect place = ToPixels(places[i]);
    const QSize least = icons ? QSize() : window.minimumSizeHint();
    window.setGeometry({place.topLeft(), place.size().expandedTo(least)});
  }
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &area_ && event->type() == QEvent::Resize) {
    form_.NoteInnerSize(PixelsToUnits(area_.width()), PixelsToUnits(area_.height()));
    PlaceFirstSteps();
  }
  if (watched == &toolBar_ && event->type() == QEvent::Resize) PlaceLamps();
  return QMainWindow::eventFilter(watched, event);
}

// The program closes the window in its last steps. A desktop that ends the session waits for this
// unless the user has refused.
void MainWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(form_.Close());
}

void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) form_.Minimised = isMinimized();
  // The area reads its background from the theme only when it is created.
  if (event->type() == QEvent::PaletteChange) area_.setBackground(palette().dark());
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

#include "Tour.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QTextStream>
#include <QTreeWidget>
#include <algorithm>

namespace oriolemark {
namespace {

QString LabelOf(const QTreeWidgetItem& item) {
  return item.text(0).section(" [", 0, 0);
}

QTreeWidgetItem* ChildOf(QTreeWidgetItem* parent, const QString& label) {
  for (int i = 0; parent != nullptr && i < parent->childCount(); ++i) {
    if (LabelOf(*parent->child(i)) == label) return parent->child(i);
  }
  return nullptr;
}

}  // namespace

Tour::Tour(Program& program, Instrument& instrument, const Link& link, QDir folder, Start start)
    : module_(program.Module()), instrument_(instrument), link_(link), folder_(std::move(folder)) {
  // A busy machine can delay the instrument's process by seconds. The tour does not test silence,
  // so a reply may take ten times as long as usual.
  module_.main.TimeOutTimer.SetInterval(1000);
  if (start == Start::First) {
    AddWaveStops();
    AddTreeStops();
    AddEditStops();
    AddFileStops();
    AddOutputStops();
    AddSheetStops();
    AddMeasureStops();
    AddDataStops();
    AddPanelStops();
    AddSaveStops();
    AddEnd();
  } else {
    AddReturnStops();
  }
  timer_.setInterval(kPause);
  QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
  timer_.start();
  patience_.start();
}

void Tour::Add(std::vector<Stop> stops) {
  for (Stop& stop : stops) stops_.push_back(std::move(stop));
}

void Tour::AddEnd() {
  const auto idle = [this] { return Idle(); };
  const auto about = [](const char* document) {
    return [document] {
      const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      return box != nullptr && box->text().contains(document);
    };
  };
  const auto cancel = [this] { Answer(QMessageBox::Cancel); };
  const auto drop = [this] { Answer(QMessageBox::No); };
  // Each document is asked about, also when the program is not going to close.
  Add({
      {"unsaved-at-close", idle, CloseMain},
      {"sheet-cancelled", about("Data Sheet File"), cancel},
      {"settings-dropped", about("Control File"), drop},
      {"close-again", idle, CloseMain},
      {"sheet-dropped", about("Data Sheet File"), drop},
      {"settings-cancelled", about("Control File"), cancel},
      {"close-at-last", idle, CloseMain},
      {"sheet-dropped-again", about("Data Sheet File"), drop},
      {"end", about("Control File"),
       [this] {
         const QString unknown = instrument_.Do("count");
         Check(unknown == "0", "commands that the instrument did not know: " + unknown + " " +
                                   instrument_.Do("unknown").simplified());
         Answer(QMessageBox::No);
       }},
  });
}

void Tour::Turn() {
  if (!pending_.isEmpty()) {
    Picture(pending_);
    pending_.clear();
  }
  if (stops_.empty() || !stops_.front().ready()) {
    if (patience_.elapsed() > kPatience) GiveUp();
    return;
  }
  const Stop stop = std::move(stops_.front());
  stops_.pop_front();
  pending_ = stop.name;
  patience_.restart();
  // A separate event, because `act` may serve a dialog until it closes while the tour goes on.
  QTimer::singleShot(0, stop.act);
}

void Tour::GiveUp() {
  timer_.stop();
  Picture("stuck");
  // Prevents the questions whether to save the changes.
  module_.sheet.Modified = false;
  module_.controlDocument.CtrlChanged = false;
  // The program does not close a second time while it asks.
  if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
  QTimer::singleShot(kPause, [this] { module_.main.Close(); });
}

int Tour::Failures() {
  const bool closed = timer_.isActive();
  Check(closed && stops_.empty(),
        stops_.empty()
            ? "the program ends at the last stop"
            : QString("the program ends at the last stop, not before ") + stops_.front().name);
  return failures_;
}

void Tour::Picture(const QString& name) {
  const QString file = QString("%1-%2.png").arg(++taken_, 2, 10, QChar('0')).arg(name);
  QPixmap shot = QGuiApplication::primaryScreen()->grabWindow(0);
  if (shot.isNull() && QApplication::activeWindow() != nullptr) {
    shot = QApplication::activeWindow()->grab();
  }
  shot.save(folder_.filePath(file));
}

void Tour::Check(bool holds, const QString& what) {
  QTextStream(stdout) << (holds ? "ok:     " : "FAILED: ") << what << Qt::endl;
  if (!holds) ++failures_;
}

void Tour::CheckInstrument(const QString& path, const QString& value) {
  const QString has = instrument_.Do("get " + path);
  Check(has == value, QString("the instrument has %1 at %2: %3").arg(value, path, has));
}

void Tour::CheckSamples(const QString& request) {
  const std::vector<int> bytes = instrument_.LastBlock(request);
  const WaveRecord& wave = Wave(0);
  bool same = !bytes.empty() && wave.Count == static_cast<int>(bytes.size());
  for (int i = 1; same && i <= wave.Count; ++i) {
    // If the first sample is one place early, the last one is repeated.
    const std::size_t at =
        std::min(static_cast<std::size_t>(i - link_.firstIndex), bytes.size() - 1);
    const int byte = bytes[at];
    same = wave.CH1Data[i] == std::clamp(byte, 26, 225) - 26;
  }
  Check(same, QString("the samples are the instrument's %1 bytes for %2 less 26")
                  .arg(bytes.size())
                  .arg(request));
}

void Tour::CheckTrigger(const QStringList& labels) {
  QStringList shown;
  if (const QTreeWidgetItem* group = Row("Trigger", "")) {
    group->treeWidget()->scrollToItem(group, QAbstractItemView::PositionAtTop);
    for (int i = 0; i < group->childCount(); ++i) shown << LabelOf(*group->child(i));
  }
  Check(shown == labels, "the trigger's rows: " + shown.join(", "));
}

QMainWindow* Tour::Main() {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (auto* window = qobject_cast<QMainWindow*>(top)) return window;
  }
  return nullptr;
}

QWidgetList Tour::Windows() {
  if (QWidget* modal = QApplication::activeModalWidget()) return {modal};
  QWidgetList windows = QApplication::topLevelWidgets();
  const auto* area = Main() != nullptr ? Main()->findChild<QMdiArea*>() : nullptr;
  if (area != nullptr && area->currentSubWindow() != nullptr) {
    windows.prepend(area->currentSubWindow());
  }
  return windows;
}

QWidget* Tour::Find(const QString& name) {
  for (QWidget* top : Windows()) {
    for (QWidget* found : top->findChildren<QWidget*>(name)) {
      if (found->isVisible()) return found;
    }
  }
  return nullptr;
}

void Tour::Click(const QString& name) {
  QWidget* found = Find(name);
  if (found == nullptr) return Check(false, "nothing on the screen is called " + name);
  // A check box reacts to the mouse only on its mark and text.
  const bool isButton = qobject_cast<QAbstractButton*>(found) != nullptr;
  const QPoint at = isButton ? QPoint(std::min(10, found->width() / 2), found->height() / 2)
                             : found->rect().center();
  QTest::mouseClick(found, Qt::LeftButton, {}, at);
}

void Tour::ClickText(const QString& text) {
  for (QWidget* top : Windows()) {
    for (auto* button : top->findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || button->text().replace("&&", "&") != text) continue;
      return QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
    }
  }
  Check(false, "nothing on the screen reads " + text);
}

void Tour::Drag(const QString& name, QPoint from, QPoint to) {
  QWidget* found = Find(name);
  if (found == nullptr) return Check(false, "nothing on the screen is called " + name);
  QTest::mousePress(found, Qt::LeftButton, {}, from);
  for (int step = 1; step <= 4; ++step) QTest::mouseMove(found, from + (to - from) * step / 4);
  QTest::mouseRelease(found, Qt::LeftButton, {}, to);
}

QWidget* Tour::Focus() {
  if (QWidget* focus = QApplication::focusWidget()) return focus;
  // Without a real screen the front window may be inactive.
  QWidget* modal = QApplication::activeModalWidget();
  QWidget* front = modal != nullptr ? modal : Main();
  return front != nullptr ? front->focusWidget() : nullptr;
}

void Tour::Press(QKeyCombination key) {
  QWidget* focus = Focus();
  if (focus == nullptr) return Check(false, "something has the focus");
  QTest::keyClick(focus, key.key(), key.keyboardModifiers());
}

void Tour::Type(const QString& text) {
  auto* line = qobject_cast<QLineEdit*>(Focus());
  if (line == nullptr) return Check(false, "a line of text has the focus");
  line->selectAll();
  QTest::keyClicks(line, text);
}

void Tour::Answer(QMessageBox::StandardButton button) {
  auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr || box->button(button) == nullptr) return Check(false, "a question is asked");
  QTest::mouseClick(box->button(button), Qt::LeftButton);
}

void Tour::NameFile(const QString& name) {
  Type(folder_.absoluteFilePath(name));
  Press(Qt::Key_Return);
}

QTreeWidgetItem* Tour::Row(const QString& group, const QString& label) {
  auto* tree = qobject_cast<QTreeWidget*>(Find("CtrlTreeView"));
  QTreeWidgetItem* item = tree != nullptr ? ChildOf(tree->topLevelItem(0), group) : nullptr;
  if (!label.isEmpty()) item = ChildOf(item, label);
  if (item == nullptr) Check(false, "a row of the settings tree: " + group + " " + label);
  return item;
}

void Tour::ClickRow(const QString& group, const QString& label, Qt::MouseButton button) {
  ClickItem(Row(group, label), button);
}

void Tour::OpenRow(const QString& group, const QString& label) {
  OpenItem(Row(group, label));
}

QTreeWidgetItem* Tour::Item(const QString& name) {
  const auto* tree = qobject_cast<QTreeWidget*>(Find("DataSheetTree"));
  const auto found = tree != nullptr ? tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive)
                                     : QList<QTreeWidgetItem*>();
  if (found.isEmpty()) Check(false, "a row of the Data Browser: " + name);
  return found.value(0);
}

void Tour::ClickItem(QTreeWidgetItem* item, Qt::MouseButton button) {
  if (item == nullptr) return;
  QTreeWidget& tree = *item->treeWidget();
  tree.scrollToItem(item);
  QTest::mouseClick(tree.viewport(), button, {}, tree.visualItemRect(item).center());
}

void Tour::OpenItem(QTreeWidgetItem* item) {
  if (item == nullptr) return;
  QTreeWidget& tree = *item->treeWidget();
  tree.scrollToItem(item);
  const QPoint at = tree.visualItemRect(item).center();
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
  QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
}

QString Tour::Shown(const QString& group, const QString& label) {
  const QTreeWidgetItem* item = Row(group, label);
  return item != nullptr ? item->text(0).section(" [", 1).chopped(1) : QString();
}

void Tour::CloseMain() {
  if (Main() != nullptr) Main()->close();
}

void Tour::OpenFileMenu() {
  if (Main() == nullptr) return;
  QMenuBar& bar = *Main()->menuBar();
  QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(bar.actions().first()).center());
}

QAction* Tour::Entry(const QString& text) {
  const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  for (QAction* action : menu != nullptr ? menu->actions() : QList<QAction*>()) {
    if (action->text().remove('&') == text) return action;
  }
  return nullptr;
}

void Tour::ChooseEntry(const QString& text) {
  QAction* action = Entry(text);
  if (action == nullptr) return Check(false, "the menu has " + text);
  auto& menu = dynamic_cast<QMenu&>(*QApplication::activePopupWidget());
  QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

}  // namespace oriolemark

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFile>
#include <QTest>
#include <QTreeWidget>

#include "Tour.h"

namespace oriolemark {
namespace {

constexpr const char* kFile = "tour.cfx";

}  // namespace

void Tour::AddTreeStops() {
  const auto idle = [this] { return Idle(); };
  const auto editing = [this] { return Editing(); };
  const auto expandAll = [this] { ChooseEntry("Expand All"); };
  Add({
      {"tree-menu", idle, [this] { ClickRow("CH1", "", Qt::RightButton); }},
      {"expanded", MenuOpen, expandAll},
      {"tree-edge", idle,
       [this] {
         CheckTrigger({"Method", "Slope", "Source", "Mode", "Coupling", "Level"});
       }},
      {"download", idle,
       [this] {
         Check(Row("Display", "")->isExpanded(), "Expand All expands the groups");
         Click("cmdDownload");
       }},
      {"downloaded", idle,
       [this] {
         for (const auto& [group, label, path] :
              {std::tuple("Time Base", "Time/Div", ":TimeBase:RANGE"),
               std::tuple("Time Base", "Format", ":TimeBase:FORMAT"),
               std::tuple("CH1", "Volt/Div", ":CHANNEL1:RANGE")}) {
           CheckInstrument(path, Shown(group, label));
         }
       }},
      {"auto-set", idle, [this] { OpenRow("Running Control", "Auto Set"); }},
      {"auto-set-read", [this] { return Progress(); },
       [this] {
         const QCursor* pointer = QApplication::overrideCursor();
         Check(pointer != nullptr && pointer->shape() == Qt::WaitCursor,
               "the wait cursor is shown");
       }},
      {"auto-set-done", idle,
       [this] {
         Check(QApplication::overrideCursor() == nullptr, "the usual pointer is shown again");
         CheckInstrument(":TimeBase:RANGE", Shown("Time Base", "Time/Div"));
       }},
      {"menu-by-key", idle,
       [this] {
         ClickRow("Trigger", "", Qt::LeftButton);
         QWidget* tree = Find("CtrlTreeView");
         tree->setFocus();
         QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, tree->mapToGlobal(QPoint()));
         QApplication::sendEvent(tree, &key);
       }},
      {"expanded-by-key", MenuOpen,
       [] {
         QWidget* menu = QApplication::activePopupWidget();
         QTest::keyClick(menu, Qt::Key_Up);
         QTest::keyClick(menu, Qt::Key_Return);
       }},
      {"method", idle, [this] { OpenRow("Trigger", "Method"); }},
      {"method-list", editing, [this] { Click("Combo"); }},
      {"method-video", MenuOpen,
       [this] {
         Press(Qt::Key_End);
         Press(Qt::Key_Return);
       }},
      {"method-sent", editing, [this] { Click("cmdOK"); }},
      {"tree-video", idle,
       [this] {
         CheckTrigger({"Method", "Source", "Polarity", "Sync", "Line number", "Video Standard"});
         CheckInstrument(":TRIGGER:METHOD", "VIDEO");
       }},
      {"method-again", idle, [this] { OpenRow("Trigger", "Method"); }},
      {"method-pulse", editing,
       [this] {
         Press(Qt::Key_P);
         Press(Qt::Key_Return);
       }},
      {"tree-pulse", idle,
       [this] {
         CheckTrigger(
             {"Method", "Source", "Pulse mode", "Pulse width", "Mode", "Coupling", "Level"});
         CheckInstrument(":TRIGGER:METHOD", "PULSE");
         Check(Row("Trigger", "")->isExpanded(), "the new method leaves the groups as they were");
       }},
  });
}

void Tour::AddEditStops() {
  const auto idle = [this] { return Idle(); };
  const auto editing = [this] { return Editing(); };
  Add({
      {"time", idle, [this] { OpenRow("Trigger", "Pulse width"); }},
      {"no-number", editing,
       [this] {
         Type("abc");
         Press(Qt::Key_Return);
       }},
      {"still-open", [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); },
       [this] { Answer(QMessageBox::Ok); }},
      {"nanoseconds", editing,
       [this] {
         Check(module_.controller.dialog.inputTxt.Text() == "abc", "what was typed stays");
         Type("1.5");
         Click("cmdEnter2");
       }},
      {"query-only", idle,
       [this] {
         CheckInstrument(":TRIGGER:PULSE WIDTH", Shown("Trigger", "Pulse width"));
         CheckInstrument(":TRIGGER:PULSE WIDTH", "0.0015us");
         OpenRow("Time Base", "Memory Size");
       }},
      {"level", Asking,
       [this] {
         Answer(QMessageBox::Ok);
         OpenRow("Trigger", "Level");
       }},
      {"level-list", editing, [this] { Click("Combo"); }},
      {"level-chosen", MenuOpen,
       [this] {
         Press(Qt::Key_Down);
         Press(Qt::Key_Return);
       }},
      {"level-sent", editing, [this] { Press(Qt::Key_Return); }},
  });
}

void Tour::AddFileStops() {
  const QString path = folder_.absoluteFilePath(kFile);
  const auto idle = [this] { return Idle(); };
  const auto editing = [this] { return Editing(); };
  Add({
      {"save-menu", idle,
       [this] {
         CheckInstrument(":TRIGGER:LEVEL", Shown("Trigger", "Level"));
         ClickRow("CH1", "", Qt::RightButton);
       }},
      {"save-as", MenuOpen,
       [this] {
         QFile::remove(folder_.filePath(kFile));
         ChooseEntry("Save Control File As");
       }},
      {"saved", Asking, [this] { NameFile("tour"); }},
      {"coupling", idle,
       [this] {
         QFile file(folder_.filePath(kFile));
         const bool whole = file.open(QIODevice::ReadOnly) && file.readAll().count("\"\r\n") == 41;
         Check(whole, "the control file has its 41 lines");
         OpenRow("CH1", "Coupling");
       }},
      {"changed", editing,
       [this] {
         Press(Qt::Key_A);
         Press(Qt::Key_Return);
       }},
      {"new-type", idle, [this] { Click("tool_New"); }},
      {"new-question", [this] { return module_.newDoc.Visible(); },
       [this] {
         ClickText("Controller");
         Click("cmdOK");
       }},
      {"new-file", Asking, [this] { Answer(QMessageBox::No); }},
      {"file-menu", idle,
       [this] {
         Check(Shown("Trigger", "Method") == "EDGE", "a new file has the defaults");
         OpenFileMenu();
       }},
      {"recent", MenuOpen, [this] { ChooseEntry("Recent Control File"); }},
      {"reopened", [path] { return Entry(path) != nullptr; }, [this, path] { ChooseEntry(path); }},
      {"upload", idle,
       [this] {
         CheckTrigger(
             {"Method", "Source", "Pulse mode", "Pulse width", "Mode", "Coupling", "Level"});
         instrument_.Do("set :TRIGGER:METHOD VIDEO");
         instrument_.Do("set :ACQUIRE:AVERAGES 256");
         Click("cmdUpload");
       }},
      {"uploaded", idle,
       [this] {
         CheckInstrument(":TRIGGER:METHOD", "PULSE");
         CheckInstrument(":ACQUIRE:AVERAGES", Shown("Acquire", "Averages"));
         CheckInstrument(":CHANNEL1:COUPLING", Shown("CH1", "Coupling"));
       }},
      {"grid", idle, [this] { OpenRow("Display", "Grid"); }},
      {"grid-half", editing,
       [this] {
         Press(Qt::Key_H);
         Press(Qt::Key_Return);
       }},
  });
}

}  // namespace oriolemark

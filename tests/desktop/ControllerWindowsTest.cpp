#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QProcess>
#include <QSettings>
#include <QTest>
#include <QTreeWidget>

#include "desktop/RunWindows.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtPrompts.h"

namespace oriolemark {
namespace {

QWidget* Focus() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal->focusWidget() : Shown("frmMain")->focusWidget();
}

void Press(std::initializer_list<Qt::Key> keys) {
  for (const Qt::Key key : keys) QTest::keyClick(Focus(), key);
}

// By keys alone to the first row that begins with this, and Enter.
void Edit(const QString& to) {
  auto* tree = qobject_cast<QTreeWidget*>(Shown("CtrlTreeView"));
  tree->setFocus();
  Press({Qt::Key_Home, Qt::Key_Asterisk});
  for (int i = 0; i < 50 && !tree->currentItem()->text(0).startsWith(to); ++i)
    Press({Qt::Key_Down});
  Press({Qt::Key_Return});
}

TEST_F(Windows, ASettingIsEditedByKeysAlone) {
  QProcess instrument;
  instrument.start(TX5000SIM_PATH, {"--link", home_.filePath("tx5000")});
  ASSERT_TRUE(instrument.waitForReadyRead(5000));
  QSettings ini(home_.filePath("Oriolemark/Oriolemark.ini"), QSettings::IniFormat);
  ini.setValue("IO Settings/ScopeIOType", 2);
  ini.setValue("Drivers/COM1", home_.filePath("tx5000"));
  ini.sync();
  Run({[](MainModule& module) { module.main.mnuToolsConnect.Click(); },
       [](MainModule&) { Edit("Run|Stop"); },
       [](MainModule& module) {
         EXPECT_EQ(Focus(), Shown("Combo"));
         Press({Qt::Key_Down, Qt::Key_Tab, Qt::Key_Escape});
         EXPECT_EQ(module.settings.RunStop, "RUN");
         Edit("Holdoff");
       },
       [](MainModule&) {
         EXPECT_EQ(Focus(), Shown("inputTxt")) << "the value, whatever had the focus before";
         QTest::sendKeyEvent(QTest::Click, Focus(), Qt::Key_unknown, QString(u'€'), {});
         QTimer::singleShot(0, [] { Press({Qt::Key_Return}); });
       },
       [](MainModule&) {
         Press({Qt::Key_Escape});  // the message that this is no number
         EXPECT_EQ(qobject_cast<QLineEdit*>(Shown("inputTxt"))->text(), "?");
         Press({Qt::Key_Backspace, Qt::Key_7, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
       },
       [](MainModule& module) {
         EXPECT_EQ(module.settings.Holdoff, "0.007ms") << "the key that had the focus, not OK";
         Edit("Method");
         QTimer::singleShot(250, [] { Press({Qt::Key_V, Qt::Key_Return}); });
       },
       [](MainModule&) {},  // the new method's settings are being read
       [](MainModule&) {
         auto* tree = qobject_cast<QTreeWidget*>(Focus());
         ASSERT_TRUE(tree && tree->currentItem());
         EXPECT_EQ(tree->currentItem()->text(0), "Method [VIDEO]") << "in the tree built anew";
         EXPECT_TRUE(tree->currentItem()->parent()->isExpanded());
         QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
         QApplication::sendEvent(tree, &key);
       },
       [](MainModule& module) {
         module.controlDocument.CtrlChanged = false;  // no question at the end
         EXPECT_NE(Shown("popmenu1"), nullptr);
       }});
  instrument.write("quit\n");
  EXPECT_TRUE(instrument.waitForFinished(5000));
}

TEST(Prompts, ANameWithoutAnExtensionIsSavedWithThatOfTheChosenFilter) {
  Application own;
  QtEventSource events;
  Waiting waiting{events};
  QtPrompts prompts{waiting};
  const QTemporaryDir folder;
  const QString typed = folder.filePath("name");
  const char* const endings[] = {".cfx", ".txt", ""};
  for (int filter = 0; filter < 3; ++filter) {
    QTimer::singleShot(200, [filter, typed] {
      QWidget* dialog = QApplication::activeModalWidget();
      for (int down = 0; down < filter; ++down)
        QTest::keyClick(dialog->findChild<QComboBox*>("fileTypeCombo"), Qt::Key_Down);
      auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
      name->setText(typed);
      QTest::keyClick(name, Qt::Key_Return);
    });
    EXPECT_EQ(prompts.AskFileName({.action = FileAction::Save,
                                   .title = "Save",
                                   .filter = "Control Files (*.cfx)|*.cfx|Text Files (*.txt)|*.txt|"
                                             "All Files (*.*)|*.*"}),
              typed.toStdString() + endings[filter]);
  }
}

}  // namespace
}  // namespace oriolemark

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QSettings>
#include <QTreeWidget>

#include "desktop/RunWindows.h"
#include "drivers/PagePrinter.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtPrompts.h"
#include "drivers/QtSettingsStore.h"

namespace oriolemark {
namespace {

// By keys alone to the first row that begins with this, and Enter.
void Edit(const QString& to) {
  auto& tree = The<QTreeWidget>("CtrlTreeView");
  tree.setFocus();
  Press({Qt::Key_Home, Qt::Key_Asterisk});
  for (int i = 0; i < 50 && !tree.currentItem()->text(0).startsWith(to); ++i) Press({Qt::Key_Down});
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
         Press({Qt::Key_7, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
       },
       [](MainModule& module) {
         EXPECT_EQ(module.settings.Holdoff, "0.007ms") << "the key that had the focus, not OK";
         Edit("Method");
       },
       Later(Keys({Qt::Key_V, Qt::Key_Return})),
       [](MainModule& module) {
         auto* tree = dynamic_cast<QTreeWidget*>(Focus());
         ASSERT_NE(tree, nullptr);
         ASSERT_NE(tree->currentItem(), nullptr);
         EXPECT_EQ(tree->currentItem()->text(0), "Method [VIDEO]") << "in the tree built anew";
         EXPECT_TRUE(tree->currentItem()->parent()->isExpanded());
         module.controlDocument.CtrlChanged = false;  // no question at the end
       }},
      16);
  instrument.write("quit\n");
  EXPECT_TRUE(instrument.waitForFinished(5000));
}

struct PromptsTest : testing::Test, Application {
  // What the user does once the box or dialog is up.
  static void Then(const std::function<void(QWidget&)>& act) {
    QTimer::singleShot(50, [act] { act(*QApplication::activeModalWidget()); });
  }

  QtEventSource events;
  Waiting waiting{events};
  const QTemporaryDir home;
  const bool atHome = qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
  QtSettingsStore store;
  PagePrinter printer{waiting};
  QtPrompts prompts{waiting, store, printer};
};

TEST_F(PromptsTest, ANameIsSavedWithTheChosenFiltersExtensionInTheFolderOfTheLastOne) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath("name").toStdString();
  const char* const endings[] = {".cfx", ".txt", ""};
  for (int filter = 0; filter < 3; ++filter) {
    Then([&](QWidget& dialog) {
      for (int down = 0; down < filter; ++down)
        QTest::keyClick(dialog.findChild<QComboBox*>("fileTypeCombo"), Qt::Key_Down);
      auto* line = dialog.findChild<QLineEdit*>("fileNameEdit");
      for (const QString& typed : {folder.path(), QString("name")}) {
        if (filter > 0 && typed != "name") continue;
        line->setText(typed);
        QTest::keyClick(line, Qt::Key_Return);
      }
    });
    EXPECT_EQ(prompts.AskFileName({.action = FileAction::Save,
                                   .title = "Save",
                                   .filter = "Control Files (*.cfx)|*.cfx|Text Files (*.txt)|*.txt|"
                                             "All Files (*.*)|*.*"}),
              path + endings[filter]);
  }
}

TEST_F(PromptsTest, ADialogBeginsInTheFolderOfTheLastFileAlsoAfterARestartUnlessItHasGone) {
  auto folder = std::make_unique<QTemporaryDir>();
  // The folder that the dialog begins in, and the name typed there.
  const auto ask = [&](const QString& typed) {
    QString began;
    Then([&](QWidget& dialog) {
      began = dynamic_cast<QFileDialog&>(dialog).directory().absolutePath();
      dialog.findChild<QLineEdit*>("fileNameEdit")->setText(typed);
      QTest::keyClick(&dialog, typed.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    });
    QtSettingsStore anew;
    QtPrompts(waiting, anew, printer)
        .AskFileName({.action = FileAction::Save, .title = "", .filter = ""});
    return began;
  };
  EXPECT_EQ(ask(folder->filePath("name")), QDir::homePath());
  EXPECT_EQ(ask({}), folder->path());
  EXPECT_EQ(ask({}), folder->path()) << "cancelled before";
  folder.reset();
  EXPECT_EQ(ask({}), QDir::homePath());
}

TEST_F(PromptsTest, AMessageIsAnsweredByItsButtonsAndMutedWhereItsBoxIsTicked) {
  constexpr auto kEscape = QMessageBox::NoButton, kReturn = QMessageBox::Help;  // keys
  using enum MessageButtons;
  const std::tuple<MessageButtons, bool, bool, QMessageBox::StandardButton, MessageAnswer> rows[] =
      {{Ok, false, false, QMessageBox::Ok, MessageAnswer::Ok},
       {Ok, true, true, QMessageBox::Ok, MessageAnswer::OkAndMute},
       {YesNoCancel, false, false, kReturn, MessageAnswer::Yes},
       {YesNoCancel, false, false, QMessageBox::No, MessageAnswer::No},
       {YesNoCancel, false, false, kEscape, MessageAnswer::Cancel},
       {YesNo, false, false, QMessageBox::Yes, MessageAnswer::Yes},
       {YesNo, false, false, kReturn, MessageAnswer::No},
       {YesNo, false, false, kEscape, MessageAnswer::No}};
  for (const auto& [buttons, mayMute, ticked, button, answer] : rows) {
    Then([mayMute = mayMute, ticked = ticked, button = button](QWidget& widget) {
      const auto& box = dynamic_cast<QMessageBox&>(widget);
      EXPECT_EQ(box.checkBox() != nullptr, mayMute);
      if (ticked) QTest::keyClick(box.checkBox(), Qt::Key_Space);
      const bool byKey = button == kEscape || button == kReturn;
      QTest::keyClick(byKey ? &widget : box.button(button),
                      button == kEscape ? Qt::Key_Escape : Qt::Key_Return);
    });
    EXPECT_EQ(prompts.Show({.text = "?", .buttons = buttons, .mayMute = mayMute}), answer);
  }
}

}  // namespace
}  // namespace oriolemark

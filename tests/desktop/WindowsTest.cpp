#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

#include "desktop/Program.h"

namespace oriolemark {
namespace {

// The real windows with settings of their own and no instrument; each step runs from the event loop
// half a second after the one before, and the last one closes the program.
class Windows : public testing::Test {
 protected:
  Windows() {
    qputenv("XDG_CONFIG_HOME", home_.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }

  void Run(std::vector<std::function<void(MainModule&)>> steps) {
    int argc = 1;
    char name[] = "Oriolemark";
    char* argv[] = {name, nullptr};
    QApplication application(argc, argv);
    Program program(application);
    QTimer timer;
    std::size_t next = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (next < steps.size()) {
        steps[next++](program.Module());
      } else {
        program.Module().main.Close();
      }
    });
    timer.start(500);
    program.Run();
    EXPECT_EQ(next, steps.size());
  }

  QTemporaryDir home_;
};

QWidget* Shown(const QString& name) {
  for (QWidget* widget : QApplication::allWidgets()) {
    if (widget->objectName() == name && widget->isVisible()) return widget;
  }
  return nullptr;
}

void Click(const QString& name) {
  QWidget* widget = Shown(name);
  ASSERT_NE(widget, nullptr) << name.toStdString();
  QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
}

// Every element that can have the focus or be clicked has a name for a screen reader.
void ExpectNames(const QString& where) {
  for (QWidget* widget : QApplication::allWidgets()) {
    if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
    const QString className = widget->metaObject()->className();
    // Inner parts of a widget that has the name itself.
    if (widget->objectName().startsWith("qt_") || className == "QLineEdit") continue;
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(widget);
    if (element == nullptr || element->role() == QAccessible::Client) continue;
    EXPECT_FALSE(element->text(QAccessible::Name).isEmpty())
        << where.toStdString() << ": " << className.toStdString() << " "
        << widget->objectName().toStdString();
  }
}

TEST_F(Windows, EveryElementOfTheMainWindowAndOfAWaveViewHasAName) {
  Run({[](MainModule&) { Click("tool_AddNewWaveform"); },
       [](MainModule& module) {
         EXPECT_EQ(module.sheet.WaveCount, 1);
         ExpectNames("main window");
       }});
}

TEST_F(Windows, RefreshWithoutALinkIsRefusedByAMessage) {
  Run({[](MainModule&) { Click("tool_AddNewWaveform"); },
       [](MainModule&) {
         QTimer::singleShot(0, [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5); });
       },
       [](MainModule& module) {
         QWidget* box = QApplication::activeModalWidget();
         ASSERT_NE(box, nullptr);
         EXPECT_EQ(box->windowTitle(), "Oriolemark");
         QTest::keyClick(box, Qt::Key_Escape);
         EXPECT_FALSE(module.sheet.Waves[0].HasData);
       }});
}

TEST_F(Windows, ClosingTheProgramUnderAModalDialogEndsIt) {
  Run({[](MainModule& module) {
         QTimer::singleShot(0, [&module] { module.main.mnuFileNew.Click(); });
       },
       [](MainModule& module) {
         EXPECT_TRUE(module.newDoc.Visible());
         EXPECT_NE(QApplication::activeModalWidget(), nullptr);
         ExpectNames("new document");
       }});
}

}  // namespace
}  // namespace oriolemark

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

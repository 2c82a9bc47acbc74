#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <vector>

#include "desktop/Program.h"

namespace oriolemark {

struct Application {
  int argc = 1;
  char word[11] = "Oriolemark";
  char* argv[2] = {word, nullptr};
  QApplication application{argc, argv};
};

using Step = std::function<void(MainModule&)>;

inline QWidget* Shown(const QString& name) {
  for (QWidget* widget : QApplication::allWidgets()) {
    if (widget->objectName() == name && widget->isVisible()) return widget;
  }
  return nullptr;
}

template <typename Widget>
Widget& The(const QString& name) {
  return dynamic_cast<Widget&>(*Shown(name));
}

// Where keys go: the front window, of which the desktop may not know yet.
inline QWidget* Focus() {
  QWidget* modal = QApplication::activeModalWidget();
  QWidget* window = modal != nullptr ? modal : Shown("frmMain");
  return window->focusWidget() != nullptr ? window->focusWidget() : window;
}

inline void Press(const std::vector<QKeyCombination>& keys) {
  for (const auto& key : keys) QTest::keyClick(Focus(), key.key(), key.keyboardModifiers());
}

// A step that presses these.
inline Step Keys(const std::vector<QKeyCombination>& keys) {
  return [keys](MainModule&) { Press(keys); };
}

// A step that does this from the event loop, as it may open a dialog and wait in it.
inline Step Later(Step action) {
  return [action = std::move(action)](MainModule& module) {
    QTimer::singleShot(0, [action, &module] { action(module); });
  };
}

inline void AddView(MainModule& module) {
  module.main.Tools[10].action();
}

inline frmWave& View(MainModule& module) {
  return dynamic_cast<frmWave&>(*module.sheet.WaveViews[0]);
}

// Builds the windows of the dialogs, which otherwise come with the first load of each.
inline void LoadDialogs(MainModule& module) {
  for (Form* form :
       std::initializer_list<Form*>{&module.about, &module.newDoc, &module.openDoc, &module.options,
                                    &module.controller.dialog, &module.passFailed,
                                    &module.waveSetting, &module.keys, &module.panel}) {
    form->Load();
  }
  // Without an instrument the mirror would show a message.
  module.panel.cmdStop.Click();
}

// The real windows with settings of their own and no instrument. The steps run from the event loop,
// the first when the desktop has framed the main window, the others when what the one before has
// brought about is through; the last one closes the program.
class Windows : public testing::Test {
 protected:
  Windows() {
    for (const char* place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
      qputenv(place, home_.path().toLocal8Bit());
    }
  }

  // At `pace` looks of 25 ms from one step to the next.
  void Run(const std::vector<Step>& steps, int pace = 5) {
    Application own;
    if (basePoints_ > 0) QApplication::setFont({QApplication::font().family(), basePoints_});
    Program program(own.application);
    MainModule& module = program.Module();
    QTimer timer;
    std::size_t next = 0;
    int quiet = 0, wanted = 12;
    // A busy machine can hold an instrument up for seconds, which is no silence here.
    module.main.TimeOutTimer.SetInterval(1000);
    QObject::connect(&timer, &QTimer::timeout, [&] {
      const bool busy = Shown("frmMain") == nullptr || module.Link().ReplyPending;
      quiet = busy ? 0 : quiet + 1;
      if (quiet < wanted) return;
      quiet = 0, wanted = pace;
      if (next < steps.size()) {
        steps[next++](module);
      } else {
        // No question at the end.
        module.sheet.Modified = false;
        module.main.Close();
      }
    });
    timer.start(25);
    program.Run();
    EXPECT_EQ(next, steps.size());
  }

  QTemporaryDir home_;
  int basePoints_ = 0;  // the desktop's size of text, if not the usual one
};

}  // namespace oriolemark

#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

#include "desktop/Program.h"

namespace oriolemark {

struct Application {
  int count = 1;
  char name[11] = "Oriolemark";
  char* names[2] = {name, nullptr};
  QApplication application{count, names};
};

// The real windows with settings of their own and no instrument; each step runs from the event loop
// half a second after the one before, or when the reply that it waits for has come, and the last
// one closes the program.
class Windows : public testing::Test {
 protected:
  Windows() { qputenv("XDG_CONFIG_HOME", home_.path().toLocal8Bit()); }

  void Run(std::vector<std::function<void(MainModule&)>> steps) {
    Application own;
    Program program(own.application);
    QTimer timer;
    std::size_t next = 0;
    // A busy machine can hold an instrument up for seconds, which is no silence here.
    program.Module().main.TimeOutTimer.SetInterval(1000);
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (program.Module().Link().ReplyPending) return;
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

inline QWidget* Shown(const QString& name) {
  for (QWidget* widget : QApplication::allWidgets()) {
    if (widget->objectName() == name && widget->isVisible()) return widget;
  }
  return nullptr;
}

}  // namespace oriolemark

#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

// Watches the start of this process for the benchmark that began it, prints one line, and ends the
// process. The line has the processor time of the process in seconds and its private memory in
// bytes.
class Watch : public QObject {
 public:
  // Without REST_WHEN_SHOWN in the environment the line comes at the first paint of the window of
  // that class. With it, a second after `settled` is true.
  Watch(const char* windowClass, std::function<bool()> settled)
      : windowClass_(windowClass), settled_(std::move(settled)) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (!shown_ && event->type() == QEvent::Paint && object->inherits(windowClass_)) {
      shown_ = true;
      // The paint itself follows this filter.
      QTimer::singleShot(0, this, &Watch::NoteShown);
    }
    return false;
  }

 private:
  void NoteShown() {
    if (!qEnvironmentVariableIsSet("REST_WHEN_SHOWN")) return Report();
    if (settled_()) {
      QTimer::singleShot(1000, this, &Watch::Report);
    } else {
      QTimer::singleShot(50, this, &Watch::NoteShown);
    }
  }

  static void Report() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
      return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    std::printf("%f %ld\n", seconds(used.ru_utime) + seconds(used.ru_stime), PrivateBytes());
    std::fflush(stdout);
    _exit(0);
  }

  static long PrivateBytes() {
    std::ifstream rollup("/proc/self/smaps_rollup");
    long bytes = 0;
    for (std::string word; rollup >> word;) {
      long kilobytes = 0;
      if (word.starts_with("Private_") && rollup >> kilobytes) bytes += kilobytes * 1024;
    }
    return bytes;
  }

  const char* windowClass_;
  std::function<bool()> settled_;
  bool shown_ = false;
};

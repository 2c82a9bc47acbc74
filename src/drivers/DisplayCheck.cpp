#include "drivers/DisplayCheck.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QString>
#include <cstdio>
#include <cstdlib>

namespace oriolemark {
namespace {

QByteArray Variable(const char* name) {
  const QByteArray value = qgetenv(name);
  return name + (value.isEmpty() ? QByteArray(" is not set") : " is \"" + value + '"');
}

// Called before the toolkit aborts, so nothing of the program exists yet.
[[noreturn]] void EndWithoutDisplay() {
  const QByteArray line =
      "oriolemark: there is no display to open a window on: " + Variable("DISPLAY") + ", " +
      Variable("WAYLAND_DISPLAY") + ", " + Variable("QT_QPA_PLATFORM") + ".\n";
  std::fputs(line.constData(), stderr);
  std::_Exit(EXIT_FAILURE);
}

void Report(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) EndWithoutDisplay();
  // The toolkit says several times in its own words that a display is missing.
  if (type != QtDebugMsg) return;
  std::fputs((qFormatLogMessage(type, context, text) + u'\n').toLocal8Bit().constData(), stderr);
}

}  // namespace

DisplayCheck::DisplayCheck() {
  qInstallMessageHandler(Report);
}

DisplayCheck::~DisplayCheck() {
  qInstallMessageHandler(nullptr);
  // A frame buffer that cannot be opened counts as a display without a screen.
  if (QGuiApplication::primaryScreen() == nullptr) EndWithoutDisplay();
}

}  // namespace oriolemark

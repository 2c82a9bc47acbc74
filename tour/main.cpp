// Operates the real windows by mouse and key events over the real line. Saves numbered screenshots
// and the log of the line. At its end the program is started a second time, on what it has kept.
// The exit code is 0 if all checks pass.
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QPalette>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <optional>

#include "Tour.h"

namespace oriolemark {
namespace {

// The program's own settings, with the simulated instrument at the far end of the link.
void WriteSettings(const QDir& config, const Link& link, const QString& line, QDir libraries) {
  config.mkpath("Oriolemark");
  QFile file(config.filePath("Oriolemark/Oriolemark.ini"));
  if (!file.open(QIODevice::WriteOnly)) return;
  QTextStream(&file) << "[Drivers]\nCOM1=\"" << line << "\"\nGpibLibrary=\""
                     << libraries.filePath("libtx5000gpib.so") << "\"\nUsbLibrary=\""
                     << libraries.filePath("libtx5000usb.so")
                     << "\"\n\n[IO%20Settings]\nScopeIOType=" << link.ioType << "\n"
                     << "BaudRate=115200\n\n[Settings]\nMainLeft=600\nMainTop=600\n"
                     << "MainWidth=17400\nMainHeight=12000\n";
}

// The palette of a desktop with a dark theme.
QPalette DarkPalette() {
  QPalette dark(QColor(53, 53, 57), QColor(45, 45, 48));
  dark.setColor(QPalette::Base, QColor(30, 30, 32));
  dark.setColor(QPalette::Highlight, QColor(42, 110, 170));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  for (const QPalette::ColorRole text :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(text, QColor(230, 230, 230));
    dark.setColor(QPalette::Disabled, text, QColor(125, 125, 125));
  }
  dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
  dark.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
  dark.setColor(QPalette::ToolTipText, QColor(230, 230, 230));
  return dark;
}

enum class Theme { Desktop, Dark };

struct Request {
  Tour::Start start = Tour::Start::First;
  Theme theme = Theme::Desktop;
  const Link* link = &kLinks[0];
  QString folder;
  QString simulator;
};

int TakeTour(const Request& request, int& argc, char** argv) {
  const Link& link = *request.link;
  QDir out(request.folder);
  out.mkpath(".");
  // The path of a socket has to be short.
  const QTemporaryDir sockets;
  const bool serial = link.ioType == kLinkRS232;
  const QString place = serial ? out.absoluteFilePath("tx5000") : sockets.filePath("tx5000");
  qputenv("TX5000SIM_SOCKET", place.toLocal8Bit());
  const QDir config(out.absoluteFilePath("config"));
  const bool first = request.start == Tour::Start::First;
  if (first) {
    WriteSettings(config, link, place,
                  QFileInfo(request.simulator).absoluteDir().filePath("../lib"));
  }
  qputenv("XDG_CONFIG_HOME", config.absolutePath().toLocal8Bit());
  qputenv("XDG_DATA_HOME", out.absoluteFilePath("data").toLocal8Bit());
  QApplication application(argc, argv);
  if (request.theme == Theme::Dark) QApplication::setPalette(DarkPalette());
  Program program(application);
  Instrument instrument;
  if (first &&
      !instrument.Start(request.simulator, link, place, out.absoluteFilePath("wire.log"))) {
    QTextStream(stderr) << "the simulated instrument does not start: " << request.simulator
                        << Qt::endl;
    return 2;
  }
  Tour tour(program, instrument, link, out, request.start);
  program.Run();
  return tour.Failures() == 0 ? 0 : 1;
}

// Returns nothing if the words are not a valid request.
std::optional<Request> Read(QStringList words) {
  Request request;
  if (words.removeOne("--again")) request.start = Tour::Start::Second;
  if (words.removeOne("--dark")) request.theme = Theme::Dark;
  if (const qsizetype at = words.indexOf("--link"); at >= 0) {
    const auto* const named = std::ranges::find_if(
        kLinks, [&](const Link& link) { return words.value(at + 1) == link.name; });
    if (named == std::end(kLinks)) return std::nullopt;
    request.link = named;
    words.remove(at, 2);
  }
  if (words.size() != 2) return std::nullopt;
  request.folder = words[0];
  request.simulator = words[1];
  return request;
}

}  // namespace
}  // namespace oriolemark

int main(int argc, char** argv) {
  QStringList words;
  for (int i = 1; i < argc; ++i) words << QString::fromLocal8Bit(argv[i]);
  const auto request = oriolemark::Read(words);
  if (!request) {
    QTextStream(stderr) << "usage: oriolemark_tour [--again] [--dark] [--link serial|gpib|usb] "
                           "FOLDER TX5000SIM"
                        << Qt::endl;
    return 2;
  }
  const int code = oriolemark::TakeTour(*request, argc, argv);
  if (request->start == oriolemark::Tour::Start::Second) return code;
  // Another process, so that only what is on the disk passes from one start to the next.
  const int second =
      QProcess::execute(QString::fromLocal8Bit(argv[0]), QStringList("--again") + words);
  return std::max(code, second == 0 ? 0 : 1);
}

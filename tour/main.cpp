// Drives the real windows by mouse and key events over the real line, and leaves numbered
// screenshots and the log of the line behind. Ends with 0 when everything was as it should be.
#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QTextStream>

#include "Tour.h"

namespace oriolemark {
namespace {

// The program's own settings, with the simulated instrument as its first port.
void WriteSettings(const QDir& config, const QString& link) {
  config.mkpath("Oriolemark");
  QFile file(config.filePath("Oriolemark/Oriolemark.ini"));
  if (!file.open(QIODevice::WriteOnly)) return;
  QTextStream(&file) << "[Drivers]\nCOM1=\"" << link << "\"\n\n[IO%20Settings]\nScopeIOType=2\n"
                     << "BaudRate=115200\n\n[Settings]\nMainLeft=600\nMainTop=600\n"
                     << "MainWidth=17400\nMainHeight=12000\n";
}

// What a desktop with a dark theme would hand to the program.
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

int TakeTour(const QString& folder, const QString& simulator, Theme theme, int& argc, char** argv) {
  QDir out(folder);
  out.mkpath(".");
  const QString link = out.absoluteFilePath("tx5000");
  const QDir config(out.absoluteFilePath("config"));
  WriteSettings(config, link);
  qputenv("XDG_CONFIG_HOME", config.absolutePath().toLocal8Bit());
  QApplication application(argc, argv);
  if (theme == Theme::Dark) QApplication::setPalette(DarkPalette());
  Program program(application);
  Instrument instrument;
  if (!instrument.Start(simulator, link, out.absoluteFilePath("wire.log"))) {
    QTextStream(stderr) << "the simulated instrument does not start: " << simulator << Qt::endl;
    return 2;
  }
  Tour tour(program, instrument, out);
  program.Run();
  return tour.Failures() == 0 ? 0 : 1;
}

}  // namespace
}  // namespace oriolemark

int main(int argc, char** argv) {
  const bool dark = argc == 4 && QByteArray(argv[1]) == "--dark";
  if (argc != 3 && !dark) {
    QTextStream(stderr) << "usage: oriolemark_tour [--dark] FOLDER TX5000SIM" << Qt::endl;
    return 2;
  }
  return oriolemark::TakeTour(argv[argc - 2], argv[argc - 1],
                              dark ? oriolemark::Theme::Dark : oriolemark::Theme::Desktop, argc,
                              argv);
}

#include "cli/program/SimulatedInstrument.h"

#include <sys/prctl.h>
#include <unistd.h>
#include <csignal>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStringList>

#include "link/LinkState.h"

namespace oriolemark {
namespace {

constexpr int kSimulatedAddress = 7;  // of GPIB
constexpr int kStartTime = 10000;     // ms
constexpr int kEndTime = 2000;        // ms

QString BesideProgram(const QString& path) {
  return QDir::cleanPath(QDir(QCoreApplication::applicationDirPath()).filePath(path));
}

// Where an installation or a build puts the library of a link.
QString LibraryOf(const QString& link) {
  const QString name = QStringLiteral("libtx5000%1.so").arg(link);
  const QString installed = BesideProgram("../lib/oriolemark/simulator/" + name);
  return QFile::exists(installed) ? installed : BesideProgram("../lib/" + name);
}

// In the new process, before the simulator runs there.
void LeaveTerminal() {
  ::setsid();
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace

SimulatedInstrument::~SimulatedInstrument() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  if (!process_.waitForFinished(kEndTime)) process_.kill();
  process_.waitForFinished(kEndTime);
}

std::optional<std::string> SimulatedInstrument::Start(std::optional<LinkChoice>& link) {
  if (!folder_.isValid()) return folder_.errorString().toStdString();
  if (!link) link = LinkChoice{.type = kLinkRS232};
  const QString place = folder_.filePath(QStringLiteral("tx5000"));
  // The virtual panel refuses older firmware.
  QStringList arguments{QStringLiteral("--firmware"), QStringLiteral("03.01.15")};
  if (link->type == kLinkRS232) {
    arguments << QStringLiteral("--link") << place;
    link->device = place.toStdString();
    link->baud = "115200";
  } else {
    const bool gpib = link->type == kLinkGpib;
    arguments << QStringLiteral("--socket") << place;
    if (gpib && link->number) {
      arguments << QStringLiteral("--gpib-address") << QString::number(*link->number);
    }
    if (gpib && !link->number) link->number = kSimulatedAddress;
    qputenv("TX5000SIM_SOCKET", QFile::encodeName(place));
    link->library = LibraryOf(gpib ? QStringLiteral("gpib") : QStringLiteral("usb")).toStdString();
  }
  process_.setStandardInputFile(QProcess::nullDevice());
  const QString messages = folder_.filePath(QStringLiteral("messages"));
  process_.setStandardErrorFile(messages);
  process_.setChildProcessModifier(LeaveTerminal);
  process_.start(BesideProgram(QStringLiteral("tx5000sim")), arguments);
  while (!process_.canReadLine()) {
    if (process_.waitForReadyRead(kStartTime)) continue;
    QFile file(messages);
    const bool wrote = file.open(QIODevice::ReadOnly) && file.size() > 0;
    return "The simulated instrument did not start: " +
           (wrote ? file.read(1000).trimmed().toStdString() : process_.errorString().toStdString());
  }
  return std::nullopt;
}

}  // namespace oriolemark

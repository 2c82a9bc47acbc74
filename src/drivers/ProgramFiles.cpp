#include "drivers/ProgramFiles.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cerrno>

namespace oriolemark {

namespace {

QString InExecutables(const char* path) {
  return QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromLatin1(path));
}

QString InstalledManual() {
  return QDir::cleanPath(InExecutables("../share/oriolemark/Oriolemark.hlp"));
}

// Root could write beside an installed program, but nothing removes what is left there.
QDir ProgramFolder() {
  const QString own = QCoreApplication::applicationDirPath();
  if (QFileInfo(own).isWritable() && !QFile::exists(InstalledManual())) return own;
  return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

}  // namespace

std::string HelpFilePath() {
  for (const QString& manual : {InExecutables("Oriolemark.hlp"), InstalledManual()}) {
    if (QFile::exists(manual)) return manual.toStdString();
  }
  return ProgramFolder().filePath(QStringLiteral("Oriolemark.hlp")).toStdString();
}

std::string HandOverFilePath() {
  const QDir folder = ProgramFolder();
  folder.mkpath(QStringLiteral("."));
  return folder.filePath(QStringLiteral("$Print.bmp")).toStdString();
}

std::string RecoveredFolder() {
  const QDir data(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
  return data.filePath(QStringLiteral("Recovered")).toStdString();
}

bool SyncToDisk(std::FILE* file) {
  // A file system without this operation reports EINVAL.
  return ::fsync(::fileno(file)) == 0 || errno == EINVAL;
}

}  // namespace oriolemark

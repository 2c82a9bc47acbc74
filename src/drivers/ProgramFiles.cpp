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

QDir ProgramFolder() {
  const QString own = QCoreApplication::applicationDirPath();
  if (QFileInfo(own).isWritable()) return own;
  return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

}  // namespace

std::string HelpFilePath() {
  const QString name = QStringLiteral("Oriolemark.hlp");
  const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(name);
  if (QFile::exists(beside)) return beside.toStdString();
  const QString shared = QStandardPaths::locate(QStandardPaths::AppDataLocation, name);
  return (shared.isEmpty() ? ProgramFolder().filePath(name) : shared).toStdString();
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

#include "drivers/ProgramFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace oriolemark {

std::string HelpFilePath() {
  const QString name = QStringLiteral("Oriolemark.hlp");
  const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(name);
  if (QFile::exists(beside)) return beside.toStdString();
  const QString shared = QStandardPaths::locate(QStandardPaths::AppDataLocation, name);
  return (shared.isEmpty() ? beside : shared).toStdString();
}

}  // namespace oriolemark

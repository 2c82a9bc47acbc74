#pragma once

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <string>

namespace oriolemark {

// Today's date in the short form of the user's locale, as Latin-1. Its type is `ShortDate`.
inline std::string SystemShortDate() {
  return QLocale::system()
      .toString(QDate::currentDate(), QLocale::ShortFormat)
      .toLatin1()
      .toStdString();
}

// The present time as a part of a file's name.
inline std::string SystemTimeStamp() {
  return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss")).toStdString();
}

}  // namespace oriolemark

#pragma once

#include <QDate>
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

}  // namespace oriolemark

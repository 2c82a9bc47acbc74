#pragma once

#include <QDate>
#include <QLocale>
#include <string>

namespace oriolemark {

// Today in the short form of the user's own locale, as Latin-1. Fits `ShortDate`.
inline std::string SystemShortDate() {
  return QLocale::system()
      .toString(QDate::currentDate(), QLocale::ShortFormat)
      .toLatin1()
      .toStdString();
}

}  // namespace oriolemark

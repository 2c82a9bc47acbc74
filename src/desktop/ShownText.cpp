#include "desktop/ShownText.h"

#include <QRegularExpression>

namespace oriolemark {

QString Shortened(const QString& text, qsizetype limit) {
  if (text.size() <= limit) return text;
  const qsizetype end = limit / 5;
  return text.first(limit - end) + "..." + text.last(end);
}

QString Breakable(QString text) {
  static const QRegularExpression kEndless("(\\S{120})");
  return text.replace(kEndless, "\\1\u200b");
}

}  // namespace oriolemark

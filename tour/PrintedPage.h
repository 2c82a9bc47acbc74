#pragma once

#include <QImage>
#include <QProcess>
#include <QRectF>

namespace oriolemark {

// The dark part of a printed letter page, in inches. The renderer is not the one that printed it.
// Empty if the file is no such page.
inline QRectF DarkPartOf(const QString& pdf) {
  constexpr int kDots = 200;
  QProcess renderer;
  renderer.start("pdftoppm", {"-r", QString::number(kDots), "-png", pdf});
  renderer.waitForFinished();
  const QImage page = QImage::fromData(renderer.readAllStandardOutput());
  if (page.size() != QSize(17, 22) * kDots / 2) return {};
  QRect dark;
  for (int y = 0; y < page.height(); ++y) {
    for (int x = 0; x < page.width(); ++x) {
      if (qGray(page.pixel(x, y)) < 128) dark |= QRect(x, y, 1, 1);
    }
  }
  return {QPointF(dark.topLeft()) / kDots, QSizeF(dark.size()) / kDots};
}

}  // namespace oriolemark

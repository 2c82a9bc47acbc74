#include "desktop/ScreenWidget.h"

#include <QImage>
#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "desktop/Bind.h"

namespace oriolemark {
namespace {

constexpr QColor kSurround(24, 24, 24);
// Room for rounded sizes at scales that are not whole. Otherwise the picture would lose a step.
constexpr QSize kSpare(6, 6);

}  // namespace

ScreenWidget::ScreenWidget(Picture& picture, QWidget* parent) : QWidget(parent), picture_(picture) {
  Name(*this, "WavePic", "Screen of the instrument");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAttribute(Qt::WA_OpaquePaintEvent);
  const QPointer<ScreenWidget> guard(this);
  picture.onChanged = [guard] {
    if (guard) guard->update();
  };
}

QSize ScreenWidget::minimumSizeHint() const {
  return {picture_.Width(), picture_.Height()};
}

QSize ScreenWidget::sizeHint() const {
  return 2 * minimumSizeHint() + kSpare;
}

void ScreenWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), kSurround);
  const Canvas& canvas = picture_.Surface();
  if (canvas.Pixels().empty()) return;
  const QImage image(reinterpret_cast<const uchar*>(canvas.Pixels().data()), canvas.Width(),
                     canvas.Height(), static_cast<qsizetype>(canvas.Width()) * 4,
                     QImage::Format_RGB32);
  // In pixels of the screen. The widget itself may begin between two of them.
  const QTransform toScreen = painter.deviceTransform();
  const QRectF room = toScreen.mapRect(QRectF(rect()));
  const int times = std::max(1, std::min(static_cast<int>(room.width() + 0.5) / canvas.Width(),
                                         static_cast<int>(room.height() + 0.5) / canvas.Height()));
  const QSize size = image.size() * times;
  const QPoint corner((room.center() - QPointF(size.width(), size.height()) / 2).toPoint());
  painter.drawImage(toScreen.inverted().mapRect(QRectF(corner, size)), image);
}

}  // namespace oriolemark

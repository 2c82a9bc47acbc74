#include "desktop/WavePictureWidget.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <algorithm>
#include <cmath>

#include "desktop/Bind.h"
#include "platform/RasterCanvas.h"

namespace oriolemark {
namespace {

QColor ToColor(Color color) {
  return {color.red, color.green, color.blue};
}

template <typename Bytes>
QImage Wrap(Bytes* pixels, int width, int height) {
  return {pixels, width, height, static_cast<qsizetype>(width) * 4, QImage::Format_RGB32};
}

}  // namespace

double CanvasScale(const QWidget& widget) {
  const double ratio = widget.devicePixelRatioF();
  return ratio / std::max(1.0, std::floor(ratio + 0.5));
}

WavePictureWidget::WavePictureWidget(Picture& picture, Backdrop& backdrop, QWidget* parent)
    : QWidget(parent), picture_(picture), backdrop_(backdrop) {
  Name(*this, "WavePic", "Waveform");
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  const QPointer<WavePictureWidget> guard(this);
  backdrop.onChanged = [guard] {
    if (!guard) return;
    guard->setGeometry(ToPixels(guard->backdrop_.Place()));
    guard->update();
  };
  picture.onChanged = [guard] {
    if (!guard) return;
    guard->setAccessibleDescription(FromWire(guard->picture_.Description()));
    guard->update();
  };
  picture.onPointer = [guard] {
    if (guard) guard->ShowPointer();
  };
  backdrop.onChanged();
}

void WavePictureWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), ToColor(backdrop_.Background()));
  const auto* raster = dynamic_cast<const RasterCanvas*>(&picture_.Surface());
  if (raster == nullptr || raster->Width() == 0 || raster->Height() == 0) return;
  QImage image = Wrap(reinterpret_cast<const uchar*>(raster->Pixels().data()), raster->Width(),
                      raster->Height());
  const double scale = CanvasScale(*this);
  image.setDevicePixelRatio(scale);
  const PixelRect part = raster->Part();
  painter.drawImage(QPointF(picture_.Left() + part.left, picture_.Top() + part.top) / scale, image);
  if (marked_) {
    painter.setPen(QPen(palette().highlight(), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void WavePictureWidget::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  marked_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
            reason == Qt::ShortcutFocusReason;
  update();
}

void WavePictureWidget::focusOutEvent(QFocusEvent*) {
  marked_ = false;
  update();
}

void WavePictureWidget::keyPressEvent(QKeyEvent* event) {
  if (!onKey || !onKey(*event)) QWidget::keyPressEvent(event);
}

QPointF WavePictureWidget::InPicture(QPointF at) const {
  return at * CanvasScale(*this) - QPointF(picture_.Left(), picture_.Top());
}

bool WavePictureWidget::OverPicture(QPointF at) const {
  return QRectF(0, 0, picture_.Width(), picture_.Height()).contains(InPicture(at));
}

void WavePictureWidget::mousePressEvent(QMouseEvent* event) {
  if (!OverPicture(event->position())) return;
  held_ = true;
  const QPointF at = InPicture(event->position());
  picture_.MouseDown(at.x(), at.y());
}

void WavePictureWidget::mouseMoveEvent(QMouseEvent* event) {
  // The release went to another window that has opened meanwhile.
  if (held_ && event->buttons() == Qt::NoButton) mouseReleaseEvent(event);
  if (!held_ && !OverPicture(event->position())) return;
  const QPointF at = InPicture(event->position());
  picture_.MouseMove(at.x(), at.y());
}

void WavePictureWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (!held_) return;
  held_ = event->buttons() != Qt::NoButton;
  const QPointF at = InPicture(event->position());
  picture_.MouseUp(at.x(), at.y());
}

void WavePictureWidget::ShowPointer() {
  static const std::map<MousePointer, Qt::CursorShape> kShapes{
      {MousePointer::Arrow, Qt::ArrowCursor},
      {MousePointer::WestEast, Qt::SizeHorCursor},
      {MousePointer::NorthSouth, Qt::SizeVerCursor}};
  setCursor(kShapes.at(picture_.Pointer()));
}

}  // namespace oriolemark

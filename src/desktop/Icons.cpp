#include "desktop/Icons.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <array>
#include <cmath>
#include <memory>

namespace oriolemark {
namespace {

constexpr double kDisabledOpacity = 0.4;
constexpr int kLitAlpha = 45;
constexpr QColor kDotColor(240, 90, 30);
constexpr double kInk = 0.85;  // the share of the text's colour; the rest is the background's

QByteArray ReadDrawing(const QString& name) {
  QFile file(":/icons/" + name + ".svg");
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Outlines are thicker than letters, so they get a slightly paler colour.
QColor InkOf(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  const bool selected = mode == QIcon::Selected;
  const QColor text =
      palette.color(QPalette::Active, selected ? QPalette::HighlightedText : QPalette::WindowText);
  const QColor ground =
      palette.color(QPalette::Active, selected ? QPalette::Highlight : QPalette::Window);
  return Mixed(ground, text, kInk);
}

// The drawings' outlines are "currentColor", the colour of the text around them.
QPixmap Render(QByteArray drawing, QSize size, const QColor& ink) {
  drawing.replace("currentColor", ink.name().toLatin1());
  QBuffer buffer(&drawing);
  QImageReader reader(&buffer, "svg");
  reader.setScaledSize(size);
  return QPixmap::fromImage(reader.read());
}

// Without colours and half transparent.
QPixmap Faded(const QPixmap& picture) {
  const QImage source = picture.toImage();
  QImage grey = source.convertToFormat(QImage::Format_Grayscale8);
  grey.setAlphaChannel(source.convertToFormat(QImage::Format_Alpha8));
  QPixmap faded(picture.size());
  faded.fill(Qt::transparent);
  QPainter painter(&faded);
  painter.setOpacity(kDisabledOpacity);
  painter.drawImage(0, 0, grey);
  return faded;
}

// Lighter, as under the mouse.
QPixmap Lit(QPixmap picture) {
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
  painter.fillRect(picture.rect(), QColor(255, 255, 255, kLitAlpha));
  return picture;
}

// A dot that is readable on every row: its edge has the colour of the text, and a gap separates it
// from the picture. The sizes are shares of the picture's height.
void DrawDot(QPixmap& picture, const QColor& edge) {
  constexpr double kRadius = 0.22, kGap = 0.08, kEdge = 0.07;
  const double unit = picture.height();
  const double radius = std::round(kRadius * unit * 2) / 2;
  const QPointF centre(picture.width() - radius, picture.height() - radius);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.drawEllipse(centre, radius + kGap * unit, radius + kGap * unit);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.setBrush(edge);
  painter.drawEllipse(centre, radius, radius);
  painter.setBrush(kDotColor);
  painter.drawEllipse(centre, radius - kEdge * unit, radius - kEdge * unit);
}

// Draws with the current palette, so that a change of theme shows at the next paint.
class DrawingEngine : public QIconEngine {
 public:
  // `open` is the drawing for the "on" state, which an expanded row uses.
  DrawingEngine(const QString& name, const QString& open, PictureMark mark)
      : names_{name, open}, drawings_{ReadDrawing(name), ReadDrawing(open)}, mark_(mark) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double scale = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    const std::size_t face = state == QIcon::On ? 1 : 0;
    const QColor ink = InkOf(mode);
    const QString key = QString("%1 %2 %3 %4 %5 %6")
                            .arg(names_[face])
                            .arg(size.width())
                            .arg(size.height())
                            .arg(ink.name())
                            .arg(mode)
                            .arg(static_cast<int>(mark_));
    QPixmap picture;
    if (QPixmapCache::find(key, &picture)) return picture;
    picture = Render(drawings_[face], size, ink);
    if (mark_ == PictureMark::Unsaved && !picture.isNull()) DrawDot(picture, ink);
    if (mode == QIcon::Disabled) picture = Faded(picture);
    if (mode == QIcon::Active) picture = Lit(picture);
    QPixmapCache::insert(key, picture);
    return picture;
  }

  bool isNull() override { return drawings_[0].isEmpty(); }
  QIconEngine* clone() const override { return std::make_unique<DrawingEngine>(*this).release(); }

 private:
  std::array<QString, 2> names_;
  std::array<QByteArray, 2> drawings_;
  PictureMark mark_;
};

}  // namespace

QColor Mixed(const QColor& one, const QColor& other, double share) {
  const auto mix = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

QIcon PictureNamed(const QString& name) {
  return PictureNamed(name, name);
}

QIcon PictureNamed(const QString& name, const QString& open, PictureMark mark) {
  return QIcon(std::make_unique<DrawingEngine>(name, open, mark).release());
}

}  // namespace oriolemark

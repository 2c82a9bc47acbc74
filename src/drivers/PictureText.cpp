#include "drivers/PictureText.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <map>

namespace oriolemark {
namespace {

constexpr int kTextPixels = 11;

QFont PictureFont(bool bold) {
  QFont font("DejaVu Sans");
  font.setPixelSize(kTextPixels);
  font.setBold(bold);
  font.setStyleStrategy(QFont::NoAntialias);
  font.setHintingPreference(QFont::PreferFullHinting);
  return font;
}

using Dashes = std::vector<RasterCanvas::TextDash>;

// Collects the pixels of a picture that are black on white.
Dashes FindDashes(const QImage& image, QPoint origin) {
  Dashes dashes;
  const int height = image.height();
  const auto isSet = [](QRgb pixel) { return qRed(pixel) < 128; };
  for (int y = 0; y < height; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    const auto* end = row + image.width();
    for (const auto* from = row; (from = std::find_if(from, end, isSet)) != end;) {
      const auto* to = std::find_if_not(from, end, isSet);
      dashes.push_back(
          {static_cast<int>(from - row) - origin.x(), y - origin.y(), static_cast<int>(to - from)});
      from = to;
    }
  }
  return dashes;
}

// The texts of a picture, each one drawn by the toolkit once. A few of them change with each step
// of a cursor, so they are all forgotten from time to time.
class TextShapes {
 public:
  std::span<const RasterCanvas::TextDash> Find(std::string_view text, bool bold) {
    if (known_.size() >= kMostTexts) known_.clear();
    const auto [found, added] = known_.try_emplace({std::string(text), bold});
    if (added) found->second = Draw(QString::fromLatin1(found->first.first), PictureFont(bold));
    return found->second;
  }

 private:
  static constexpr std::size_t kMostTexts = 200;

  static Dashes Draw(const QString& text, const QFont& font) {
    const QFontMetrics metrics(font);
    const QPoint corner(4 * kTextPixels,
                        4 * kTextPixels);  // room for what reaches beyond the metrics
    const QSize size(metrics.horizontalAdvance(text), metrics.height());
    QImage image(size + QSize(8 * kTextPixels, 8 * kTextPixels), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(corner + QPoint(0, metrics.ascent()), text);
    painter.end();
    return FindDashes(image, corner);
  }

  std::map<std::pair<std::string, bool>, Dashes> known_;
};

}  // namespace

std::unique_ptr<Canvas> MakeRasterCanvas() {
  return std::make_unique<RasterCanvas>(
      [shapes = std::make_shared<TextShapes>()](std::string_view text, bool bold) {
        return shapes->Find(text, bold);
      });
}

}  // namespace oriolemark

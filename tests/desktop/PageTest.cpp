#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QImage>
#include <QPageSize>
#include <random>

#include "desktop/RunWindows.h"
#include "drivers/PagePrinter.h"
#include "drivers/QtEventSource.h"
#include "output/Bitmap.h"
#include "tour/PrintedPage.h"

namespace oriolemark {
namespace {

TEST(Bitmap, AnotherReaderFindsTheSamePixels) {
  std::mt19937 random;
  for (int width = 1; width < 40; ++width) {
    const int height = 1 + static_cast<int>(random() % 30);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
    for (std::uint32_t& pixel : pixels) pixel = 0xFF000000 | static_cast<std::uint32_t>(random());
    const auto read = QImage::fromData(QByteArray::fromStdString(BitmapBytes(pixels, width)));
    const auto* bytes = reinterpret_cast<const uchar*>(pixels.data());
    ASSERT_EQ(read,
              QImage(bytes, width, height, QImage::Format_RGB32).convertToFormat(read.format()))
        << width;
  }
}

TEST(PrintedPage, ThePictureLiesAtItsInchesWhateverThePrinterIsSetTo) {
  qputenv("CUPS_SERVER", "127.0.0.1:1");
  Application own;
  QTemporaryDir folder;
  QtEventSource events;
  Waiting waiting(events);
  PagePrinter owner(waiting);
  const QString pdf = folder.filePath("page.pdf");
  const QString bitmap = folder.filePath("black.bmp");
  QImage black(320, 240, QImage::Format_RGB32);
  black.fill(Qt::black);
  ASSERT_TRUE(black.save(bitmap));
  const auto report = owner.MakeReport();
  for (const int resolution : {72, 300, 1200}) {
    SCOPED_TRACE(resolution);
    QPrinter& printer = owner.Printer();
    printer.setOutputFileName(pdf);
    printer.setResolution(resolution);
    printer.setFullPage(false);
    printer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape, QMarginsF(30, 40, 50, 60)));
    report->StartReport();
    report->StartPage(8.5F, 11.0F);
    report->AddPicture({1.1F, 2.0F, 7.28F, 5.2F}, bitmap.toStdString());
    report->AddPicture({0, 0, 8, 11}, "/no/picture.bmp");
    ASSERT_EQ(report->SendToPrinter(), std::nullopt);
    const QRectF printed = DarkPartOf(pdf);
    EXPECT_NEAR(printed.left(), 1.1, 0.02);
    EXPECT_NEAR(printed.top(), 2.0, 0.02);
    EXPECT_NEAR(printed.right(), 8.38, 0.02);
    EXPECT_NEAR(printed.bottom(), 7.2, 0.02);
  }
  for (const auto& [path, reason] : {std::pair("/no/folder/a.pdf", "No such file or directory"),
                                     {"/dev/null", "Invalid argument"}}) {
    owner.Printer().setOutputFileName(path);
    EXPECT_EQ(report->SendToPrinter(), reason);
  }
  // No print server runs.
  owner.Printer().setOutputFileName({});
  QElapsedTimer time;
  time.start();
  EXPECT_TRUE(report->SendToPrinter().value_or("").starts_with("No printer can be used."));
  EXPECT_LT(time.elapsed(), 2000);
}

}  // namespace
}  // namespace oriolemark

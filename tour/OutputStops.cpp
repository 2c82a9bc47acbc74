#include <QAction>
#include <QFile>
#include <QPrintPreviewWidget>
#include <cmath>

#include "PrintedPage.h"
#include "Tour.h"

namespace oriolemark {
namespace {

constexpr const char* kBitmap = "wave.bmp";
constexpr const char* kPage = "page.pdf";
constexpr double kTolerance = 0.02;  // inches

bool Near(double value, double expected) {
  return std::abs(value - expected) <= kTolerance;
}

}  // namespace

// The picture of the first waveform leaves the program in each way.
void Tour::AddOutputStops() {
  const auto idle = [this] { return Idle(); };
  Add({
      {"export-window", idle, [this] { OpenItem("Wave0"); }},
      {"export", idle,
       [this] {
         QFile::remove(folder_.filePath(kBitmap));
         QFile::remove(folder_.filePath(kPage));
         Click("cmdExport");
       }},
      {"export-named", Asking, [this] { NameFile(kBitmap); }},
      {"exported", idle,
       [this] {
         const QImage saved(folder_.filePath(kBitmap));
         Check(!saved.isNull() && saved.convertToFormat(QImage::Format_RGB32) == Raster(0),
               "the exported picture has the pixels of the view");
         Click("cmdPreview");
       }},
      {"preview", Asking,
       [this] {
         const auto* page = QApplication::activeModalWidget()->findChild<QPrintPreviewWidget*>();
         Check(page != nullptr && page->pageCount() == 1, "the preview shows one page");
         for (QAction* action : QApplication::activeModalWidget()->findChildren<QAction*>()) {
           if (action->text() == "Print") action->trigger();
         }
       }},
      {"preview-print", [] { return Find("filename") != nullptr; },
       [this] {
         Click("filename");
         Type(folder_.absoluteFilePath(kPage));
         ClickText("&Print");
       }},
      {"preview-printed", idle,
       [this] {
         CheckPage(0.6);
         QFile::remove(folder_.filePath(kPage));
       }},
      {"page-setup", idle, OpenFileMenu},
      {"page-setup-open", MenuOpen, [this] { ChooseEntry("Page Setup..."); }},
      {"print-to-file", Asking,
       [this] {
         Click("filename");
         Type(folder_.absoluteFilePath(kPage));
       }},
      {"printer-chosen", Asking, [this] { ClickText("OK"); }},
      {"print", idle, [this] { Click("cmdPrint"); }},
      {"printed", idle, [this] { CheckPage(1.1); }},
  });
}

void Tour::CheckPage(double left) {
  const QRectF dark = DarkPartOf(folder_.filePath(kPage));
  Check(Near(dark.left(), left) && Near(dark.top(), 2.0) && Near(dark.width(), 7.28) &&
            Near(dark.height(), 5.2),
        QString("the printed picture lies at %1, %2, and is %3 by %4 inches large")
            .arg(dark.left())
            .arg(dark.top())
            .arg(dark.width())
            .arg(dark.height()));
}

}  // namespace oriolemark

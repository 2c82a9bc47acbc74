#include "drivers/PagePrinter.h"

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinterInfo>
#include <utility>
#include <vector>

#include "drivers/ModalDialog.h"
#include "drivers/ShownText.h"

namespace oriolemark {
namespace {

constexpr QSize kPreviewSize(820, 900);

class QtPageReport : public PageReport {
 public:
  QtPageReport(PagePrinter& printer, Waiting& waiting) : printer_(printer), waiting_(waiting) {}

  void StartReport() override { placed_.clear(); }
  void StartPage(float width, float height) override { size_ = {width, height}; }
  void AddPicture(const InchRect& place, const std::string& path) override {
    const QImage picture(QString::fromStdString(path));
    if (picture.isNull()) return;
    placed_.emplace_back(QRectF(place.left, place.top, place.width, place.height), picture);
  }
  void ShowPreview() override;
  std::optional<std::string> SendToPrinter() override;

 private:
  QPrinter& PreparedPrinter();
  bool Paint(QPrinter& printer) const;

  PagePrinter& printer_;
  Waiting& waiting_;
  QSizeF size_;
  std::vector<std::pair<QRectF, QImage>> placed_;
};

// Whatever paper the printer dialog names, the page has its own size. Its places count from the
// paper's edge.
QPrinter& QtPageReport::PreparedPrinter() {
  QPrinter& printer = printer_.Printer();
  printer.setPageLayout(QPageLayout(QPageSize(size_, QPageSize::Inch), QPageLayout::Portrait, {}));
  printer.setFullPage(true);
  return printer;
}

bool QtPageReport::Paint(QPrinter& printer) const {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const double dots = printer.resolution();
  for (const auto& [place, picture] : placed_) {
    painter.drawImage(QRectF(place.topLeft() * dots, place.size() * dots), picture);
  }
  return painter.end() && printer.printerState() != QPrinter::Error;
}

void QtPageReport::ShowPreview() {
  if (waiting_.Closing()) return;
  QPrintPreviewDialog preview(&PreparedPrinter(), QApplication::activeWindow());
  preview.setWindowTitle("Print Preview");
  preview.resize(kPreviewSize);
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                   [this](QPrinter* printer) { Paint(*printer); });
  RunModal(preview, waiting_);
}

std::optional<std::string> QtPageReport::SendToPrinter() {
  if (Paint(PreparedPrinter())) return std::nullopt;
  return "The page could not be printed.";
}

}  // namespace

QPrinter& PagePrinter::Printer() {
  if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  return *printer_;
}

void PagePrinter::ShowDialog(const std::string& title) {
  if (waiting_.Closing()) return;
  QPrintDialog dialog(&Printer(), QApplication::activeWindow());
  dialog.setWindowTitle(QString::fromStdString(title));
  RunModal(dialog, waiting_);
}

std::unique_ptr<PageReport> PagePrinter::MakeReport() {
  return std::make_unique<QtPageReport>(*this, waiting_);
}

}  // namespace oriolemark

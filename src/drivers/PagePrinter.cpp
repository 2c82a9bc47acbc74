#include "drivers/PagePrinter.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinterInfo>
#include <QScreen>
#include <QSet>
#include <utility>
#include <vector>

#include "drivers/ModalDialog.h"
#include "drivers/SharedLibrary.h"

namespace oriolemark {
namespace {

constexpr QSize kPreviewSize(820, 900);

constexpr const char* kNoPrinter =
    "No printer can be used.\n\nChoose a printer, or print to a file, with Page Setup in the File "
    "menu.";

constexpr const char* kRefused =
    "\n\nThe printer did not take the page. Choose another one with Page Setup in the File menu.";

// The print system's last error. The toolkit does not return it.
class PrintSystem {
 public:
  // Empty if the last request was accepted.
  std::string LastError() const {
    auto* code = library_.Find<int()>("cupsLastError");
    auto* text = library_.Find<const char*()>("cupsLastErrorString");
    if (code == nullptr || text == nullptr || code() < kFirstError) return {};
    const char* reason = text();
    return reason == nullptr ? "" : reason;
  }

 private:
  static constexpr int kFirstError = 0x400;

  SharedLibrary library_{{"libcups.so.2"}, {{"cupsLastError"}, {"cupsLastErrorString"}}};
};

std::string FileError(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::Append)
             ? std::string()
             : path.toStdString() + ": " + file.errorString().toStdString();
}

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
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const double dots = printer.resolution();
  for (const auto& [place, picture] : placed_) {
    painter.drawImage(QRectF(place.topLeft() * dots, place.size() * dots), picture);
  }
  return painter.end();
}

void QtPageReport::ShowPreview() {
  if (waiting_.Closing()) return;
  QPrintPreviewDialog preview(&PreparedPrinter(), QApplication::activeWindow());
  preview.setWindowTitle("Print Preview");
  preview.resize(kPreviewSize.boundedTo(preview.screen()->availableSize() * 9 / 10));
  // The page has one size and one direction.
  const QSet<QString> unused{"Portrait", "Landscape", "Page setup"};
  for (QAction* action : preview.findChildren<QAction*>()) {
    if (unused.contains(action->text())) action->setVisible(false);
  }
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                   [this](QPrinter* printer) { Paint(*printer); });
  RunModal(preview, waiting_);
}

std::optional<std::string> QtPageReport::SendToPrinter() {
  QPrinter& printer = PreparedPrinter();
  const QString file = printer.outputFileName();
  if (!Paint(printer)) {
    const std::string reason = file.isEmpty() ? std::string() : FileError(file);
    return reason.empty() ? kNoPrinter : reason;
  }
  if (!file.isEmpty()) return std::nullopt;
  const std::string refused = PrintSystem().LastError();
  return refused.empty() ? std::nullopt : std::optional(refused + kRefused);
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
  // The dialog only chooses. The toolkit's word on this button is "Print".
  for (const auto* box : dialog.findChildren<QDialogButtonBox*>()) {
    for (QAbstractButton* button : box->buttons()) {
      if (box->buttonRole(button) == QDialogButtonBox::AcceptRole) button->setText("OK");
    }
  }
  RunModal(dialog, waiting_);
}

std::unique_ptr<PageReport> PagePrinter::MakeReport() {
  return std::make_unique<QtPageReport>(*this, waiting_);
}

}  // namespace oriolemark

#include "desktop/PagePrinter.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QImage>
#include <QPageLayout>
#include <QPaintEngine>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QScreen>
#include <QSet>
#include <QTemporaryDir>
#include <utility>
#include <vector>

#include "desktop/ModalDialog.h"
#include "drivers/ProgramFiles.h"
#include "drivers/SharedLibrary.h"
#include "platform/Files.h"

namespace oriolemark {
namespace {

constexpr QSize kPreviewSize(820, 900);

constexpr std::size_t kLongestFile = 64 << 20;

constexpr const char* kNotPrinted =
    "The page could not be printed.\n\nThere may be no room for temporary files.";
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

// The choices of a printer dialog.
void CopyChoices(const QPrinter& from, QPrinter& to) {
  to.setPrinterName(from.printerName());
  to.setOutputFileName(from.outputFileName());
  to.setPaperSource(from.paperSource());
  to.setCopyCount(from.copyCount());
  to.setCollateCopies(from.collateCopies());
  to.setColorMode(from.colorMode());
  to.setDuplex(from.duplex());
  to.setResolution(from.resolution());
}

class QtPageReport : public PageReport {
 public:
  QtPageReport(PagePrinter& printer, Waiting& waiting) : printer_(printer), waiting_(waiting) {}

  void StartReport() override { placed_.clear(); }
  void StartPage(float width, float height) override { size_ = {width, height}; }
  void AddPicture(const InchRect& place, const std::string& path) override {
    const std::string bytes = ReadFile(path, kLongestFile).bytes;
    const QImage picture = QImage::fromData(QByteArray::fromStdString(bytes));
    if (picture.isNull()) return;
    placed_.emplace_back(QRectF(place.left, place.top, place.width, place.height), picture);
  }
  std::optional<std::string> ShowPreview() override;
  std::optional<std::string> SendToPrinter() override { return Print(printer_.Printer()); }

 private:
  void SetPage(QPrinter& printer) const;
  bool Paint(QPrinter& printer) const;
  // Both return why the page could not be printed.
  std::optional<std::string> Print(QPrinter& printer) const;
  std::optional<std::string> PrintToFile(QPrinter& printer) const;

  PagePrinter& printer_;
  Waiting& waiting_;
  QSizeF size_;
  std::vector<std::pair<QRectF, QImage>> placed_;
};

// Whatever paper the printer dialog names, the page has its own size. Its places count from the
// paper's edge. Each step is taken by itself, because a printer refuses a whole layout whose
// margins it does not have.
void QtPageReport::SetPage(QPrinter& printer) const {
  printer.setPageSize(QPageSize(size_, QPageSize::Inch));
  printer.setPageOrientation(QPageLayout::Portrait);
  printer.setFullPage(true);
}

bool QtPageReport::Paint(QPrinter& printer) const {
  SetPage(printer);
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const double dots = printer.resolution();
  for (const auto& [place, picture] : placed_) {
    painter.drawImage(QRectF(place.topLeft() * dots, place.size() * dots), picture);
  }
  return painter.end();
}

// The choices of the preview's own print dialog are for that page only.
std::optional<std::string> QtPageReport::ShowPreview() {
  if (waiting_.Closing()) return std::nullopt;
  QPrinter printer(QPrinter::HighResolution);
  CopyChoices(printer_.Printer(), printer);
  SetPage(printer);
  QPrintPreviewDialog preview(&printer, QApplication::activeWindow());
  preview.setWindowTitle("Print Preview");
  preview.resize(kPreviewSize.boundedTo(preview.screen()->availableSize() * 9 / 10));
  // The page has one size and one direction.
  const QSet<QString> unused{"Portrait", "Landscape", "Page setup"};
  for (QAction* action : preview.findChildren<QAction*>()) {
    if (unused.contains(action->text())) action->setVisible(false);
  }
  std::optional<std::string> failure;
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                   [this, &failure](QPrinter* page) {
                     // The engine of a page on the screen records a picture.
                     const bool shown = page->paintEngine()->type() == QPaintEngine::Picture;
                     if (shown) {
                       Paint(*page);
                     } else {
                       failure = Print(*page);
                     }
                   });
  RunModal(preview, waiting_);
  return failure;
}

std::optional<std::string> QtPageReport::Print(QPrinter& printer) const {
  if (!printer.outputFileName().isEmpty()) return PrintToFile(printer);
  if (!Paint(printer)) return printer.printerName().isEmpty() ? kNoPrinter : kNotPrinted;
  const std::string refused = PrintSystem().LastError();
  return refused.empty() ? std::nullopt : std::optional(refused + kRefused);
}

// The toolkit does not report a full disk. So it prints into a file of ours, which then replaces
// the user's like any other file that is saved.
std::optional<std::string> QtPageReport::PrintToFile(QPrinter& printer) const {
  const QString file = printer.outputFileName();
  const QTemporaryDir folder;
  const QString draft = folder.filePath("page.pdf");
  printer.setOutputFileName(draft);
  const bool painted = Paint(printer);
  printer.setOutputFileName(file);
  const FileContents page = ReadFile(draft.toStdString(), kLongestFile);
  if (!painted || page.error || page.bytes.find("%%EOF") == std::string::npos) return kNotPrinted;
  const auto failure = WriteFile(file.toStdString(), page.bytes, SyncToDisk);
  return failure ? std::optional(failure->text) : std::nullopt;
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
  // There is one page.
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintCollateCopies);
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

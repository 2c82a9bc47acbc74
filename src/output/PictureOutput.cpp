#include "output/PictureOutput.h"

#include "output/Bitmap.h"

namespace oriolemark {
namespace {

constexpr ExportDialog kBitmapExport{"Export File", "BitMap Files (*.bmp)|*.bmp"};

// Inches. The printed picture begins half an inch further right than the previewed one.
constexpr float kPageWidth = 8.5F;
constexpr float kPageHeight = 11.0F;
constexpr float kPreviewLeft = 0.6F;
constexpr float kPrintLeft = 1.1F;
constexpr float kPictureTop = 2.0F;
constexpr float kPictureWidth = 7.28F;
constexpr float kPictureHeight = 5.2F;

}  // namespace

void PictureOutput::Export(const Canvas& picture) const {
  ExportFile(context_.exporting, kBitmapExport, [&picture]() -> std::optional<std::string> {
    // A picture that is too large to draw has no pixels.
    if (picture.Pixels().empty()) return std::nullopt;
    return BitmapBytes(picture.Pixels(), picture.Width());
  });
}

void PictureOutput::Preview(const Canvas& picture, const std::function<void()>& restore) const {
  if (const auto report = MakePage(picture, kPreviewLeft)) report->ShowPreview();
  restore();
}

void PictureOutput::Print(const Canvas& picture, const std::function<void()>& restore) const {
  const auto report = MakePage(picture, kPrintLeft);
  const auto reason = report ? report->SendToPrinter() : std::nullopt;
  restore();
  if (reason) context_.exporting.prompts.Show({.systemText = *reason});
}

std::shared_ptr<PageReport> PictureOutput::MakePage(const Canvas& picture, float left) const {
  SaveFile(context_.exporting, context_.handOverFile,
           BitmapBytes(picture.Pixels(), picture.Width()));
  // A message of the save serves events, in which the window may be closed.
  const std::shared_ptr<PageReport> report = report_;
  if (!report) return nullptr;
  report->StartReport();
  report->StartPage(kPageWidth, kPageHeight);
  report->AddPicture({left, kPictureTop, kPictureWidth, kPictureHeight}, context_.handOverFile);
  return report;
}

}  // namespace oriolemark

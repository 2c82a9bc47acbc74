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

// A picture that is too large to draw has no pixels.
std::optional<std::string> BytesOf(const Canvas& picture) {
  if (picture.Pixels().empty()) return std::nullopt;
  return BitmapBytes(picture.Pixels(), picture.Width());
}

}  // namespace

void PictureOutput::Export(const Canvas& picture) const {
  ExportFile(context_.exporting, kBitmapExport, [&] { return BytesOf(picture); });
}

void PictureOutput::Export(const std::function<std::unique_ptr<Canvas>()>& draw) const {
  ExportFile(context_.exporting, kBitmapExport, [&] { return BytesOf(*draw()); });
}

void PictureOutput::Preview(const Canvas& picture, const std::function<void()>& restore) const {
  PutOnPage(picture, kPreviewLeft, &PageReport::ShowPreview, restore);
}

void PictureOutput::Print(const Canvas& picture, const std::function<void()>& restore) const {
  PutOnPage(picture, kPrintLeft, &PageReport::SendToPrinter, restore);
}

void PictureOutput::PutOnPage(const Canvas& picture, float left, LastStep lastStep,
                              const std::function<void()>& restore) const {
  SaveFile(context_.exporting, context_.handOverFile,
           BitmapBytes(picture.Pixels(), picture.Width()));
  // Held here, because the window may be closed while a message or the preview is shown.
  const std::shared_ptr<PageReport> report = report_;
  if (!report) return;
  report->StartReport();
  report->StartPage(kPageWidth, kPageHeight);
  report->AddPicture({left, kPictureTop, kPictureWidth, kPictureHeight}, context_.handOverFile);
  const auto failure = ((*report).*lastStep)();
  restore();
  if (failure) context_.exporting.prompts.Show({.systemText = *failure});
}

}  // namespace oriolemark

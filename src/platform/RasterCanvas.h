#pragma once

#include <functional>
#include <vector>

#include "platform/Canvas.h"

namespace oriolemark {

// A picture of 32-bit pixels. All desktops draw the same pixels, except in texts. Coordinates may
// be any doubles. What lies outside the picture costs no time. A coordinate that is not finite
// draws nothing.
class RasterCanvas final : public Canvas {
 public:
  // Paints a text onto the pixels. (x, y) is its top left corner, which may lie outside the
  // picture.
  using TextPainter = std::function<void(RasterCanvas& canvas, int x, int y, std::string_view text,
                                         Color color, bool bold)>;

  explicit RasterCanvas(TextPainter painter = {}) : textPainter(std::move(painter)) {}

  int Width() const override { return width_; }
  int Height() const override { return height_; }
  // Negative sizes count as 0.
  void SetSize(int width, int height) override;

  std::span<const std::uint32_t> Pixels() const override { return pixels_; }
  // The same, to be painted on.
  std::uint32_t* Scanlines() { return pixels_.data(); }
  // The number of pixels that memory is allocated for.
  std::size_t Capacity() const { return pixels_.capacity(); }

  void Clear(Color background) override;
  void SetColor(Color color) override { color_ = color; }
  // A line of width 2 covers, at each of its points, that pixel and its left and upper neighbours.
  void SetLineWidth(int pixels) override { lineWidth_ = pixels > 1 ? pixels : 1; }
  void SetPenStyle(PenStyle style) override { style_ = style; }
  void SetBold(bool bold) override { bold_ = bold; }

  void Pixel(Point at) override;
  void Line(Point from, Point to) override;
  void Text(Point at, std::string_view text) override;
  void PixelRow(Point first, double step, int count) override;
  void PixelColumn(Point first, double step, int count) override;
  void Polyline(std::span<const Point> points) override;
  void SetPixels(std::span<const std::uint32_t> colours) override;

  // The copy has the same text painter and drawing state.
  std::unique_ptr<Canvas> MakeCopy() const override;
  // Copies size and contents. Ignores a canvas that is not a raster.
  void CopyFrom(const Canvas& other) override;

  // If empty, no text is drawn.
  TextPainter textPainter;

 private:
  struct PixelPoint {
    int x;
    int y;
  };

  void Put(int x, int y);
  void Stamp(int x, int y);
  void DrawSegment(PixelPoint from, PixelPoint to);
  void FillColumn(int x, int low, int high);
  void FillColumns(const std::vector<PixelPoint>& points);
  bool WorthColumns(const std::vector<PixelPoint>& points) const;

  std::vector<std::uint32_t> pixels_;
  int width_ = 0;
  int height_ = 0;
  Color color_;
  int lineWidth_ = 1;
  PenStyle style_ = PenStyle::Solid;
  bool bold_ = false;
};

}  // namespace oriolemark

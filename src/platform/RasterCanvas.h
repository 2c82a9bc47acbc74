#pragma once

#include <functional>
#include <vector>

#include "platform/Canvas.h"

namespace oriolemark {

// A picture of 32-bit pixels, the same pixels on every desktop, texts excepted. Coordinates may be
// any doubles: what lies outside costs no time, and what is not a finite number draws nothing.
class RasterCanvas final : public Canvas {
 public:
  // Paints a text with its top left corner at (x, y), which may lie outside, onto the pixels.
  using TextPainter = std::function<void(RasterCanvas& canvas, int x, int y, std::string_view text,
                                         Color color, bool bold)>;

  explicit RasterCanvas(TextPainter painter = {}) : textPainter(std::move(painter)) {}

  int Width() const override { return width_; }
  int Height() const override { return height_; }
  // Negative sizes count as 0.
  void SetSize(int width, int height) override;

  // Row after row from the top, each pixel 0xFFRRGGBB, Width() pixels a row without padding. Valid
  // until the next SetSize or CopyFrom.
  const std::uint32_t* Pixels() const { return pixels_.data(); }
  std::uint32_t* Pixels() { return pixels_.data(); }
  // Pixels that memory is held for.
  std::size_t Capacity() const { return pixels_.capacity(); }

  void Clear(Color background) override;
  void SetColor(Color color) override { color_ = color; }
  // A line of width 2 covers each of its points, its left and its upper neighbour.
  void SetLineWidth(int pixels) override { lineWidth_ = pixels > 1 ? pixels : 1; }
  void SetPenStyle(PenStyle style) override { style_ = style; }
  void SetBold(bool bold) override { bold_ = bold; }

  void Pixel(Point at) override;
  void Line(Point from, Point to) override;
  void Text(Point at, std::string_view text) override;
  void PixelRow(Point first, double step, int count) override;
  void PixelColumn(Point first, double step, int count) override;
  void Polyline(std::span<const Point> points) override;

  // The copy has the same text painter and drawing state.
  std::unique_ptr<Canvas> MakeCopy() const override;
  // Takes over size and contents; what is no raster is skipped.
  void CopyFrom(const Canvas& other) override;

  // Without one no text is drawn.
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

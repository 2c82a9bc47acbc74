#pragma once

#include <functional>
#include <vector>

#include "platform/Canvas.h"
#include "platform/Rounding.h"

namespace oriolemark {

// A picture of 32-bit pixels. All desktops draw the same pixels, except in texts. Coordinates may
// be any doubles. What lies outside the part that is kept costs no time. A coordinate that is not
// finite draws nothing.
class RasterCanvas final : public Canvas {
 public:
  // Paints a text onto the pixels. (x, y) is its top left corner, counted from the part that is
  // kept. It may lie outside of that.
  using TextPainter = std::function<void(RasterCanvas& canvas, int x, int y, std::string_view text,
                                         Color color, bool bold)>;

  explicit RasterCanvas(TextPainter painter = {}) : textPainter(std::move(painter)) {}

  PixelRect Part() const override { return {left_, top_, width_, height_}; }
  void SetPart(int width, int height, const PixelRect& part) override;

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
  // Fills a dense trace column by column. Equal to the single lines, pixel for pixel.
  void Trace(const TracePlan& plan, std::size_t first, const TraceRows& trace) override;
  void SetPixels(std::span<const std::uint32_t> colours) override;

  // The copy has the same text painter and drawing state.
  std::unique_ptr<Canvas> MakeCopy() const override;
  // Copies size and contents. Ignores a canvas that is not a raster.
  void CopyFrom(const Canvas& other) override;

  // If empty, no text is drawn.
  TextPainter textPainter;

 private:
  // Counted from the part that is kept, as all whole numbers below.
  struct PixelPoint {
    int x;
    int y;
  };

  // The rows of a trace in one column. Empty if low is above high.
  struct Run {
    int low;
    int high;
  };

  static std::uint32_t ToPixel(Color color) {
    return 0xFF000000U |
           static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
  }
  bool Holds(PixelPoint at) const {
    return at.x >= 0 && at.x < width_ && at.y >= 0 && at.y < height_;
  }
  PixelPoint Rounded(Point at) const {
    return {RoundInReach(at.x) - left_, RoundInReach(at.y) - top_};
  }
  // A pixel inside the part.
  std::uint32_t* At(int x, int y) {
    return pixels_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + x;
  }
  void Put(int x, int y);
  void Stamp(int x, int y);
  // The ends are included. What lies outside the picture is left out.
  void FillRect(int left, int top, int right, int bottom);
  void DrawSegment(PixelPoint from, PixelPoint to);
  void DrawInside(PixelPoint from, PixelPoint to);
  void DrawStamps(PixelPoint from, PixelPoint to);

  void DrawThinTrace(const TracePlan& plan, std::size_t first, const TraceRows& trace);
  bool CollectRuns(const TracePlan& plan, std::size_t first, const TraceRows& trace);
  void ExtendRun(int x, int one, int other);
  void JoinRuns(PixelPoint from, PixelPoint to);
  void FillRuns();
  void FillTile(int x, const Run* runs, Run inner, Run outer);

  std::vector<std::uint32_t> pixels_;
  std::vector<Run> runs_;  // of the trace that is drawn, one a column of the picture
  int wholeWidth_ = 0;
  int wholeHeight_ = 0;
  int left_ = 0;
  int top_ = 0;
  int width_ = 0;
  int height_ = 0;
  Color color_;
  int lineWidth_ = 1;
  PenStyle style_ = PenStyle::Solid;
  bool bold_ = false;
};

}  // namespace oriolemark

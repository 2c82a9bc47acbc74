#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/Canvas.h"
#include "platform/Rounding.h"

namespace oriolemark {

// A picture of 32-bit pixels. All desktops draw the same pixels, except in texts. Coordinates may
// be any doubles. What lies outside the part that is kept costs no time. A coordinate that is not
// finite draws nothing.
class RasterCanvas final : public Canvas {
 public:
  // A row of a text's pixels. The position is counted from the text's top left corner.
  struct TextDash {
    int x;
    int y;
    int width;
  };
  // Finds the pixels of a text. They are used before the next text is asked for.
  using TextShaper = std::function<std::span<const TextDash>(std::string_view text, bool bold)>;

  explicit RasterCanvas(TextShaper shaper = {}) : textShaper(std::move(shaper)) {}

  PixelRect Part() const override { return {left_, top_, width_, height_}; }
  void SetPart(int width, int height, const PixelRect& part) override;

  std::span<const std::uint32_t> Pixels() const override { return pixels_; }
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
  // Neighbours that fall on the same pixels are drawn once.
  void PixelRows(double x, std::span<const double> heights, double step, int count) override;
  void PixelColumns(std::span<const double> positions, double y, double step, int count) override;
  // Fills a dense trace column by column. Equal to the single lines, pixel for pixel.
  void Trace(const TracePlan& plan, std::size_t first, const TraceRows& trace) override;
  void SetPixels(std::span<const std::uint32_t> colours) override;

  // The copy has the same text shaper and drawing state.
  std::unique_ptr<Canvas> MakeCopy() const override;
  void BeginOverlay() override;
  bool DropOverlay() override;

  // If empty, no text is drawn.
  TextShaper textShaper;

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
  // A shape that was drawn: a thin line, or a rectangle between two corners.
  enum class Shape { Line, Rect };
  struct Stroke {
    PixelPoint from;
    PixelPoint to;
    Shape shape;
  };

  // Whoever writes pixels notes where.
  void Note(PixelPoint from, PixelPoint to, Shape shape);
  void EraseStrokes(Color background);
  // All drawing within an overlay ends here.
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
  // Most of a picture is ground, and clearing it all costs more than a few thin traces. So a clear
  // in the colour of the one before only draws over what was drawn since, while that is little.
  std::optional<Color> ground_;  // empty if more was drawn than is worth it
  std::vector<Stroke> strokes_;  // since the ground was cleared, without the overlay
  std::size_t touched_ = 0;      // about so many pixels pass through memory to erase them
  std::vector<Run> runs_;        // of the trace that is drawn, one a column of the picture
  struct Covered {
    std::uint32_t at;  // counted row by row
    std::uint32_t pixel;
  };
  bool overlaid_ = false;
  std::vector<Covered> covered_;  // by the overlay, in the order of drawing
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

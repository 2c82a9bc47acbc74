#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "platform/TracePlan.h"

namespace oriolemark {

struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  bool operator==(const Color&) const = default;
};

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

// The rows of a trace, and the pixel at which a row lies.
struct TraceRows {
  std::span<const std::int32_t> rows;
  double scale;  // pixels a row, above 0
  double origin;
  double At(std::int32_t row) const { return row * scale + origin; }
};

struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const PixelRect&) const = default;
};

enum class PenStyle { Solid, Dotted };

// A picture to draw on. Coordinates are pixels from the top left corner. Points are rounded to the
// nearest pixel. A line includes both of its ends. Nothing is drawn outside the picture.
//
// A canvas may keep only a part of a picture. The coordinates are still those of the whole, and the
// part has the same pixels as it would have there.
class Canvas {
 public:
  virtual ~Canvas() = default;

  // The part of the picture that is kept.
  virtual PixelRect Part() const = 0;
  int Width() const { return Part().width; }
  int Height() const { return Part().height; }
  // Sets the size of the picture and the part to keep of it. Leaves the contents undefined until
  // the next Clear.
  virtual void SetPart(int width, int height, const PixelRect& part) = 0;
  // The same, and keeps all of it. Negative sizes count as 0.
  void SetSize(int width, int height);

  virtual void Clear(Color background) = 0;

  // State that the drawing operations use.
  virtual void SetColor(Color color) = 0;
  virtual void SetLineWidth(int pixels) = 0;
  virtual void SetPenStyle(PenStyle style) = 0;
  virtual void SetBold(bool bold) = 0;

  virtual void Pixel(Point at) = 0;
  virtual void Line(Point from, Point to) = 0;
  // Draws 8-bit text with its top left corner at `at`, on a transparent background.
  virtual void Text(Point at, std::string_view text) = 0;

  // Runs. One call draws the same pixels as many single calls.
  // Pixels at (first.x + k * step, first.y) for k from 0 to count - 1.
  virtual void PixelRow(Point first, double step, int count);
  virtual void PixelColumn(Point first, double step, int count);
  // The same row at each of these heights, or the same column at each of these positions.
  virtual void PixelRows(double x, std::span<const double> heights, double step, int count);
  virtual void PixelColumns(std::span<const double> positions, double y, double step, int count);
  // Lines from each point to the next.
  void Polyline(std::span<const Point> points);
  // Lines from each point of a trace to the next. The first row lies at the plan's point `first`.
  // Draws nothing if the plan has fewer points than there are rows from there on.
  virtual void Trace(const TracePlan& plan, std::size_t first, const TraceRows& trace);

  // Sets all pixels, row by row from the top, each 0x..RRGGBB. Does nothing unless there are
  // exactly as many as the picture has.
  virtual void SetPixels(std::span<const std::uint32_t> colours) = 0;

  // The pixels that are kept, row by row from the top, each 0xFFRRGGBB. A row has Width() pixels
  // without padding. Empty if the canvas keeps none. Valid until the next SetPart or
  // SetSize.
  virtual std::span<const std::uint32_t> Pixels() const = 0;

  // An off-screen picture with the same size and contents.
  virtual std::unique_ptr<Canvas> MakeCopy() const = 0;

  // An overlay is a drawing that can be taken away again. DropOverlay brings back the picture as it
  // was at BeginOverlay. It returns false, and changes nothing, if there is no overlay: none was
  // begun, or the picture was cleared or set anew since. Beginning a second one keeps the first for
  // good. Meant for a few thousand pixels, because each one that is covered is remembered.
  virtual void BeginOverlay() = 0;
  virtual bool DropOverlay() = 0;
};

}  // namespace oriolemark

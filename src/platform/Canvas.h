#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

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

enum class PenStyle { Solid, Dotted };

// A picture to draw on. Coordinates are pixels from the top left corner; points are rounded to the
// nearest pixel, both ends of a line are drawn, what lies outside is cut off.
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual int Width() const = 0;
  virtual int Height() const = 0;
  // The picture's contents are undefined until the next Clear.
  virtual void SetSize(int width, int height) = 0;

  virtual void Clear(Color background) = 0;

  // State that the drawing operations use.
  virtual void SetColor(Color color) = 0;
  virtual void SetLineWidth(int pixels) = 0;
  virtual void SetPenStyle(PenStyle style) = 0;
  virtual void SetBold(bool bold) = 0;

  virtual void Pixel(Point at) = 0;
  virtual void Line(Point from, Point to) = 0;
  // Top left corner at `at`, transparent background. 8-bit text.
  virtual void Text(Point at, std::string_view text) = 0;

  // Runs: the same pixels as the single calls, in one call.
  // Pixels at (first.x + k * step, first.y) for k from 0 to count - 1.
  virtual void PixelRow(Point first, double step, int count);
  virtual void PixelColumn(Point first, double step, int count);
  // Lines from each point to the next.
  virtual void Polyline(std::span<const Point> points);

  // An off-screen picture of the same size and contents; and the way back.
  virtual std::unique_ptr<Canvas> MakeCopy() const = 0;
  virtual void CopyFrom(const Canvas& other) = 0;
};

}  // namespace oriolemark

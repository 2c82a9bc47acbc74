#pragma once

#include <memory>

#include "platform/Canvas.h"

namespace oriolemark {

// A canvas for stories that are not about pictures: it forgets what is drawn.
class BlankCanvas : public Canvas {
 public:
  int Width() const override { return width_; }
  int Height() const override { return height_; }
  void SetSize(int width, int height) override {
    width_ = width;
    height_ = height;
  }
  void Clear(Color) override {}
  void SetColor(Color) override {}
  void SetLineWidth(int) override {}
  void SetPenStyle(PenStyle) override {}
  void SetBold(bool) override {}
  void Pixel(Point) override {}
  void Line(Point, Point) override {}
  void Text(Point, std::string_view) override {}
  void PixelRow(Point, double, int) override {}
  void PixelColumn(Point, double, int) override {}
  void Polyline(std::span<const Point>) override {}
  std::unique_ptr<Canvas> MakeCopy() const override { return std::make_unique<BlankCanvas>(*this); }
  void CopyFrom(const Canvas&) override {}

 private:
  int width_ = 0;
  int height_ = 0;
};

}  // namespace oriolemark

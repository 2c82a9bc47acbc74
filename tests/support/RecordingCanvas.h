#pragma once

#include <string>
#include <vector>

#include "platform/Canvas.h"

namespace oriolemark {

// Keeps each drawing call as one text, runs as single calls:
//   clear 000000
//   pixel 30,26 C0C0C0
//   line 25,25 325,25 C0C0C0 width 2       (and "dotted")
//   text 25,10 FF8000 bold TAVIK           (or "plain")
class RecordingCanvas : public Canvas {
 public:
  using Calls = std::vector<std::string>;

  Calls calls;

  // The calls that begin with `start`, without it.
  Calls CallsOf(const std::string& start) const;

  int Width() const override { return width_; }
  int Height() const override { return height_; }
  void SetSize(int width, int height) override;
  void Clear(Color background) override;
  void SetColor(Color color) override { color_ = color; }
  void SetLineWidth(int pixels) override { lineWidth_ = pixels; }
  void SetPenStyle(PenStyle style) override { style_ = style; }
  void SetBold(bool bold) override { bold_ = bold; }
  void Pixel(Point at) override;
  void Line(Point from, Point to) override;
  void Text(Point at, std::string_view text) override;
  std::unique_ptr<Canvas> MakeCopy() const override;
  // The calls of the copy stand for its contents; that they came from one is noted behind them.
  void CopyFrom(const Canvas& other) override;

 private:
  int width_ = 0;
  int height_ = 0;
  Color color_;
  int lineWidth_ = 1;
  PenStyle style_ = PenStyle::Solid;
  bool bold_ = false;
};

}  // namespace oriolemark

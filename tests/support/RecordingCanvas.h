#pragma once

#include <array>
#include <cstdio>
#include <optional>
#include <vector>

#include "platform/Canvas.h"
#include "values/Number.h"

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
  Calls CallsOf(const std::string& start) const {
    Calls found;
    for (const std::string& call : calls) {
      if (call.starts_with(start)) found.push_back(call.substr(start.size()));
    }
    return found;
  }

  PixelRect Part() const override { return part_; }
  void SetPart(int, int, const PixelRect& part) override {
    part_ = part;
    overlay_.reset();
  }
  void Clear(Color background) override {
    overlay_.reset();
    calls = {"clear " + Show(background)};
  }
  void SetColor(Color color) override { color_ = Show(color); }
  void SetLineWidth(int pixels) override {
    lineWidth_ = pixels == 1 ? "" : " width " + std::to_string(pixels);
  }
  void SetPenStyle(PenStyle style) override { dots_ = style == PenStyle::Dotted ? " dotted" : ""; }
  void SetBold(bool bold) override { weight_ = bold ? " bold " : " plain "; }
  void Pixel(Point at) override { calls.push_back("pixel " + Show(at) + " " + color_); }
  void Line(Point from, Point to) override {
    calls.push_back("line " + Show(from) + " " + Show(to) + " " + color_ + lineWidth_ + dots_);
  }
  void Text(Point at, std::string_view text) override {
    calls.push_back("text " + Show(at) + " " + color_ + weight_ + std::string(text));
  }
  void SetPixels(std::span<const std::uint32_t> colours) override {
    calls.push_back("pixels " + std::to_string(colours.size()));
  }
  std::span<const std::uint32_t> Pixels() const override { return {}; }
  std::unique_ptr<Canvas> MakeCopy() const override {
    return std::make_unique<RecordingCanvas>(*this);
  }
  void BeginOverlay() override { overlay_ = calls.size(); }
  bool DropOverlay() override {
    if (!overlay_) return false;
    calls.resize(*overlay_);
    overlay_.reset();
    return true;
  }

 private:
  static std::string Show(Point at) {
    // Nine decimals hide what the order of two multiplications leaves behind.
    return FormatFixed(at.x, 0, 9) + "," + FormatFixed(at.y, 0, 9);
  }
  static std::string Show(Color color) {
    std::array<char, 7> shown{};
    std::snprintf(shown.data(), shown.size(), "%02X%02X%02X", color.red, color.green, color.blue);
    return shown.data();
  }

  PixelRect part_;
  std::optional<std::size_t> overlay_;
  std::string color_ = "000000";
  std::string lineWidth_;
  std::string dots_;
  std::string weight_ = " plain ";
};

}  // namespace oriolemark

#include "support/RecordingCanvas.h"

#include "values/Number.h"

namespace oriolemark {
namespace {

std::string ShowNumber(double value) {
  // Nine decimals hide what the order of two multiplications leaves behind.
  return FormatFixed(value, 0, 9);
}

std::string Show(Point at) {
  return ShowNumber(at.x) + "," + ShowNumber(at.y);
}

std::string Show(Color color) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string shown;
  for (const int part : {color.red, color.green, color.blue}) {
    shown += kDigits[static_cast<std::size_t>(part / 16)];
    shown += kDigits[static_cast<std::size_t>(part % 16)];
  }
  return shown;
}

}  // namespace

RecordingCanvas::Calls RecordingCanvas::CallsOf(const std::string& start) const {
  Calls found;
  for (const std::string& call : calls) {
    if (call.starts_with(start)) found.push_back(call.substr(start.size()));
  }
  return found;
}

void RecordingCanvas::SetSize(int width, int height) {
  width_ = width;
  height_ = height;
}

void RecordingCanvas::Clear(Color background) {
  calls.clear();
  calls.push_back("clear " + Show(background));
}

void RecordingCanvas::Pixel(Point at) {
  calls.push_back("pixel " + Show(at) + " " + Show(color_));
}

void RecordingCanvas::Line(Point from, Point to) {
  std::string call = "line " + Show(from) + " " + Show(to) + " " + Show(color_);
  if (lineWidth_ != 1) call += " width " + ShowNumber(lineWidth_);
  if (style_ == PenStyle::Dotted) call += " dotted";
  calls.push_back(call);
}

void RecordingCanvas::Text(Point at, std::string_view text) {
  calls.push_back("text " + Show(at) + " " + Show(color_) + (bold_ ? " bold " : " plain ") +
                  std::string(text));
}

std::unique_ptr<Canvas> RecordingCanvas::MakeCopy() const {
  return std::make_unique<RecordingCanvas>(*this);
}

void RecordingCanvas::CopyFrom(const Canvas& other) {
  calls = dynamic_cast<const RecordingCanvas&>(other).calls;
  calls.push_back("copied");
}

}  // namespace oriolemark

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/Canvas.h"
#include "platform/Control.h"
#include "platform/WindowUnits.h"

namespace oriolemark {

// Shape of the mouse pointer over a picture.
enum class MousePointer { Arrow, WestEast, NorthSouth };

// A picture that moves inside the area behind it. Position and size are in pixels, relative to that
// area. The size may be far larger than any screen, so the canvas keeps only the part that shows.
// It keeps nothing of a picture with too many pixels to draw.
class Picture : public Control {
 public:
  explicit Picture(std::unique_ptr<Canvas> canvas) : canvas_(std::move(canvas)) {}

  // Never null; lives as long as the picture.
  Canvas& Surface() { return *canvas_; }
  const Canvas& Surface() const { return *canvas_; }

  int Left() const { return left_; }
  int Top() const { return top_; }
  int Width() const { return width_; }
  int Height() const { return height_; }

  void MoveTo(int left, int top) {
    const std::pair old(left_, top_);
    left_ = left;
    top_ = top;
    if (old != std::pair(left, top)) Tell();
  }
  // Does not notify the listener: NoteDrawn follows it.
  void SetSize(int width, int height) {
    width_ = width;
    height_ = height;
  }
  // A description of the picture in words. Changing it does not notify the listener either.
  const std::string& Description() const { return description_; }
  void SetDescription(std::string text) { description_ = std::move(text); }
  // Notifies the listener, once for the whole drawing, that the picture was sized or redrawn.
  void NoteDrawn() const { Tell(); }

  MousePointer Pointer() const { return pointer_; }
  void SetPointer(MousePointer pointer) {
    if (pointer == pointer_) return;
    pointer_ = pointer;
    if (onPointer) onPointer();
  }

  // Mouse events at a pixel of the picture, from any button.
  void MouseDown(double x, double y) const { Call(mouseDown, x, y); }
  void MouseMove(double x, double y) const { Call(mouseMove, x, y); }
  void MouseUp(double x, double y) const { Call(mouseUp, x, y); }

  // Handlers of the form.
  using MouseHandler = std::function<void(double x, double y)>;
  MouseHandler mouseDown;
  MouseHandler mouseMove;
  MouseHandler mouseUp;

  // The second listener on the toolkit's side, beside onChanged: the pointer's shape has changed.
  std::function<void()> onPointer;

 private:
  static void Call(const MouseHandler& handler, double x, double y) {
    if (handler) handler(x, y);
  }

  std::unique_ptr<Canvas> canvas_;
  std::string description_;
  int left_ = 0;
  int top_ = 0;
  int width_ = 0;
  int height_ = 0;
  MousePointer pointer_ = MousePointer::Arrow;
};

// The area behind a picture: its place in the window and the colour around the picture.
class Backdrop : public Control {
 public:
  const UnitRect& Place() const { return place_; }
  void SetPlace(const UnitRect& place) { Change(place_, place); }
  Color Background() const { return background_; }
  void SetBackground(Color background) { Change(background_, background); }

 private:
  UnitRect place_;
  Color background_;
};

}  // namespace oriolemark

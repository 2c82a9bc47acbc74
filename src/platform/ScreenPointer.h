#pragma once

#include "platform/Control.h"

namespace oriolemark {

// Shapes of the mouse pointer, by their codes.
enum class PointerShape { Normal = 0, Hourglass = 11 };

// The mouse pointer of the whole screen, whatever it is over.
class ScreenPointer : public Control {
 public:
  PointerShape Shape() const { return shape_; }
  void SetShape(PointerShape shape) { Change(shape_, shape); }

 private:
  PointerShape shape_ = PointerShape::Normal;
};

}  // namespace oriolemark

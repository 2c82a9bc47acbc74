#pragma once

#include <utility>

#include "platform/Control.h"
#include "platform/WindowUnits.h"

namespace oriolemark {

// A scroll bar from 0 to 100. The handler runs when the value changes, by the user or by code.
class ScrollBar : public Control {
 public:
  explicit ScrollBar(std::function<void()> change = {}) : change_(std::move(change)) {}

  double Value() const { return value_; }
  // Ignores a value outside 0 to 100.
  void SetValue(double value) {
    if (value < 0 || value > 100) return;
    if (Change(value_, value) && change_) change_();
  }
  // The visible part of the contents, in per cent: one page of the bar.
  double PageStep() const { return pageStep_; }
  void SetPageStep(double percent) { Change(pageStep_, percent); }

  const UnitRect& Place() const { return place_; }
  void SetPlace(const UnitRect& place) { Change(place_, place); }

  static constexpr double kLineStep = 1;

 private:
  std::function<void()> change_;
  double value_ = 0;
  double pageStep_ = 1;
  UnitRect place_;
};

}  // namespace oriolemark

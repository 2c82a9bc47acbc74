#pragma once

#include "platform/Control.h"

namespace oriolemark {

// A bar from 0 to 100. It ignores values outside that range.
class ProgressBar : public Control {
 public:
  double Value() const { return value_; }
  void SetValue(double percent) {
    if (percent >= 0 && percent <= kMaximum) Change(value_, percent);
  }
  // The steps at which the bar has to be drawn, without serving events. A toolkit that draws it at
  // each new number does not listen.
  void Refresh() const {
    if (onRefresh) onRefresh();
  }
  std::function<void()> onRefresh;

  static constexpr double kMaximum = 100;

 private:
  double value_ = 0;
};

}  // namespace oriolemark

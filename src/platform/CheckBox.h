#pragma once

#include <utility>

#include "platform/Control.h"

namespace oriolemark {

// A check box. The handler runs when the value changes, by the user or by code.
class CheckBox : public Control {
 public:
  explicit CheckBox(std::function<void()> click = {}) : click_(std::move(click)) {}

  bool Value() const { return value_; }
  void SetValue(bool value) {
    if (Change(value_, value) && click_) click_();
  }

 private:
  std::function<void()> click_;
  bool value_ = false;
};

}  // namespace oriolemark

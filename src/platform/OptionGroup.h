#pragma once

#include <utility>
#include <vector>

#include "platform/Control.h"

namespace oriolemark {

// A group of option buttons. At most one is selected; none selected is a valid state. The handler
// runs with the index each time an option becomes selected, by the user or by code. It does not run
// when a selection is taken away.
class OptionGroup : public Control {
 public:
  static constexpr int kNone = -1;

  explicit OptionGroup(int count, std::function<void(int)> click = {})
      : click_(std::move(click)), optionEnabled_(static_cast<std::size_t>(count), true) {}

  int Count() const { return static_cast<int>(optionEnabled_.size()); }
  int Selected() const { return selected_; }
  bool IsSelected(int index) const { return selected_ == index; }

  void Select(int index) {
    if (Change(selected_, index) && index != kNone && click_) click_(index);
  }
  void Deselect(int index) {
    if (selected_ == index) Select(kNone);
  }

  bool OptionEnabled(int index) const { return optionEnabled_[static_cast<std::size_t>(index)]; }
  void SetOptionEnabled(int index, bool enabled) {
    if (OptionEnabled(index) == enabled) return;
    optionEnabled_[static_cast<std::size_t>(index)] = enabled;
    Tell();
  }

 private:
  std::function<void(int)> click_;
  std::vector<bool> optionEnabled_;
  int selected_ = kNone;
};

}  // namespace oriolemark

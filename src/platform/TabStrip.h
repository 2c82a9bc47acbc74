#pragma once

#include <functional>
#include <utility>

#include "platform/Control.h"

namespace oriolemark {

// A row of tabs, one of which is selected. The handler runs when the selection changes, by the user
// or by code.
class TabStrip : public Control {
 public:
  explicit TabStrip(int count, std::function<void()> changed = {})
      : changed_(std::move(changed)), count_(count) {}

  int Count() const { return count_; }
  int Selected() const { return selected_; }
  // Ignores an index outside the row.
  void Select(int index) {
    if (index < 0 || index >= count_) return;
    if (Change(selected_, index) && changed_) changed_();
  }
  // Moves the selection by so many tabs, backward for a negative number, and wraps at the ends.
  void Step(int steps) { Select(((selected_ + steps) % count_ + count_) % count_); }

 private:
  std::function<void()> changed_;
  int count_;
  int selected_ = 0;
};

}  // namespace oriolemark

#pragma once

#include <functional>
#include <utility>

#include "platform/Control.h"

namespace oriolemark {

// A row of tabs of which one is selected. The handler runs when the selection changes, whoever
// changed it.
class TabStrip : public Control {
 public:
  explicit TabStrip(int count, std::function<void()> changed = {})
      : changed_(std::move(changed)), count_(count) {}

  int Count() const { return count_; }
  int Selected() const { return selected_; }
  // An index outside the row is skipped.
  void Select(int index) {
    if (index < 0 || index >= count_) return;
    if (Change(selected_, index) && changed_) changed_();
  }
  // So many tabs forward, or backward for a negative number, round the ends.
  void Step(int steps) { Select(((selected_ + steps) % count_ + count_) % count_); }

 private:
  std::function<void()> changed_;
  int count_;
  int selected_ = 0;
};

}  // namespace oriolemark

#pragma once

#include <functional>

namespace oriolemark {

// What every control has. A control is a record of state with a handler; looks, layout and focus
// belong to the toolkit's side, which listens to it.
class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Change(enabled_, enabled); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Change(visible_, visible); }

  // The one listener, the toolkit's side: told after each change of state.
  std::function<void()> onChanged;

 protected:
  void Tell() const {
    if (onChanged) onChanged();
  }
  // Stores and tells; false when nothing changed.
  template <typename Value>
  bool Change(Value& held, const Value& value) {
    if (held == value) return false;
    held = value;
    Tell();
    return true;
  }

 private:
  bool enabled_ = true;
  bool visible_ = true;
};

}  // namespace oriolemark

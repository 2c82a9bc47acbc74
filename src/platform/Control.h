#pragma once

#include <functional>

namespace oriolemark {

// The base of every control. A control holds state and a handler. Looks, layout and focus belong to
// the toolkit's side, which listens to it.
class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Change(enabled_, enabled); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Change(visible_, visible); }

  // The only listener, on the toolkit's side. Called after each change of state.
  std::function<void()> onChanged;

 protected:
  void Tell() const {
    if (onChanged) onChanged();
  }
  // Stores the value and calls the listener. Returns false if nothing changed.
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

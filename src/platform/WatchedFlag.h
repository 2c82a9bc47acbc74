#pragma once

#include <functional>

namespace oriolemark {

// A flag of a record with one listener, which is called after each change. Copying a record copies
// the value and leaves the listener where it is.
class WatchedFlag {
 public:
  // It is set and read like a bool.
  WatchedFlag(bool value = false) : value_(value) {}  // NOLINT(google-explicit-constructor)
  WatchedFlag(const WatchedFlag& other) : value_(other.value_) {}
  WatchedFlag& operator=(const WatchedFlag& other) { return *this = other.value_; }
  WatchedFlag& operator=(bool value) {
    const bool changed = value != value_;
    value_ = value;
    if (changed && onChanged) onChanged();
    return *this;
  }
  operator bool() const { return value_; }  // NOLINT(google-explicit-constructor)

  std::function<void()> onChanged;

 private:
  bool value_;
};

}  // namespace oriolemark

#pragma once

#include <string>

#include "platform/Control.h"

namespace oriolemark {

// A text that changes while the program runs.
class Label : public Control {
 public:
  const std::string& Text() const { return text_; }
  void SetText(const std::string& text) { Change(text_, text); }

 private:
  std::string text_;
};

}  // namespace oriolemark

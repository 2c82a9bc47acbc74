#pragma once

#include <string>

#include "platform/Control.h"

namespace oriolemark {

// A text that the user can edit. The text is what stands in the box at any moment.
class TextBox : public Control {
 public:
  const std::string& Text() const { return text_; }
  void SetText(const std::string& text) { Change(text_, text); }

 private:
  std::string text_;
};

}  // namespace oriolemark

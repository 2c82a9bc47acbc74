#pragma once

#include <utility>

#include "platform/Label.h"

namespace oriolemark {

// A text that the user can edit. Text() is always what the box shows. The handler runs at each
// change of the text, by the user or by code.
class TextBox : public Label {
 public:
  explicit TextBox(std::function<void()> changed = {}) : changed_(std::move(changed)) {}

  void SetText(const std::string& text) {
    if (text == Text()) return;
    Label::SetText(text);
    if (changed_) changed_();
  }

 private:
  std::function<void()> changed_;
};

}  // namespace oriolemark

#pragma once

#include <string>
#include <utility>

#include "platform/Control.h"

namespace oriolemark {

// A push button. `Face` names its set of pictures; it is empty for a button without pictures.
class Button : public Control {
 public:
  explicit Button(std::function<void()> click = {}) : click_(std::move(click)) {}

  void SetClick(std::function<void()> click) { click_ = std::move(click); }
  // The user's click. Does nothing while the button is disabled.
  void Click() {
    if (Enabled() && click_) click_();
  }

  const std::string& Face() const { return face_; }
  void SetFace(const std::string& face) { Change(face_, face); }

 private:
  std::function<void()> click_;
  std::string face_;
};

}  // namespace oriolemark

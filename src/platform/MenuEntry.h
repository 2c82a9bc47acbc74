#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Control.h"

namespace oriolemark {

// An entry of a menu, or the root of a further one. The caption is UTF-8; "&" in it stands before
// the access key, and "&&" for itself.
class MenuEntry : public Control {
 public:
  explicit MenuEntry(std::string caption, std::function<void()> click = {})
      : caption_(std::move(caption)), click_(std::move(click)) {}

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption) { Change(caption_, caption); }
  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Change(checked_, checked); }

  // The entries of the menu that opens here, if there are any.
  std::vector<MenuEntry*> submenu;

  void Click() {
    if (Enabled() && click_) click_();
  }

 private:
  std::string caption_;
  std::function<void()> click_;
  bool checked_ = false;
};

}  // namespace oriolemark

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Control.h"

namespace oriolemark {

enum class ComboStyle {
  Free,      // any text can be typed
  ListOnly,  // only entries can be chosen; the text is empty if none is chosen
};

// A list with a text box. The handler runs when the user or code chooses an entry, and when the
// user's edit changes the text. It does not run when code writes the text.
class ComboBox : public Control {
 public:
  static constexpr int kNone = -1;

  explicit ComboBox(std::function<void()> changed = {}) : changed_(std::move(changed)) {}
  explicit ComboBox(ComboStyle style, std::function<void()> changed = {})
      : style_(style), changed_(std::move(changed)) {}

  ComboStyle Style() const { return style_; }

  const std::vector<std::string>& Items() const { return items_; }
  void SetItems(std::vector<std::string> items) {
    items_ = std::move(items);
    listIndex_ = kNone;
    if (style_ == ComboStyle::ListOnly) text_.clear();
    Tell();
  }

  // Appends to the list.
  void AddItems(const std::vector<std::string>& items) {
    items_.insert(items_.end(), items.begin(), items.end());
    Tell();
  }

  const std::string& Text() const { return text_; }
  // A list-only box ignores a text that is not an entry.
  void SetText(const std::string& text) {
    const int index = IndexOf(text);
    if (index == kNone && style_ == ComboStyle::ListOnly) return;
    listIndex_ = index;
    Change(text_, text);
  }
  // The user has pressed Enter in the text or has left the box.
  void EndEdit(const std::string& text) {
    if (text == text_) return;
    SetText(text);
    if (changed_) changed_();
  }

  int ListIndex() const { return listIndex_; }
  // Ignores an index outside the list.
  void SetListIndex(int index) {
    if (index < 0 || index >= static_cast<int>(items_.size())) return;
    text_ = items_[static_cast<std::size_t>(index)];
    listIndex_ = index;
    Tell();
    if (changed_) changed_();
  }

 private:
  int IndexOf(const std::string& text) const {
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (items_[i] == text) return static_cast<int>(i);
    }
    return kNone;
  }

  ComboStyle style_ = ComboStyle::Free;
  std::function<void()> changed_;
  std::vector<std::string> items_;
  std::string text_;
  int listIndex_ = kNone;
};

}  // namespace oriolemark

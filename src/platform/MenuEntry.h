#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Control.h"

namespace oriolemark {

// A separator that can be hidden is an entry with this caption.
inline constexpr const char* kBarCaption = "-";

// Doubles each "&" of a text, so that it is not taken as the mark of an access key.
inline std::string PlainCaption(std::string_view text) {
  std::string caption;
  for (const char character : text) {
    if (character == '&') caption += '&';
    caption += character;
  }
  return caption;
}

// An entry of a menu, or the root of a submenu. The caption is UTF-8. "&" marks the access key;
// "&&" is a plain "&".
class MenuEntry : public Control {
 public:
  MenuEntry() = default;
  explicit MenuEntry(std::string caption, std::function<void()> click = {})
      : caption_(std::move(caption)), click_(std::move(click)) {}

  // The name by which tests find the entry, and its shortcut keys ("Ctrl+N").
  std::string name;
  std::string keys;

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption) { Change(caption_, caption); }
  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Change(checked_, checked); }

  // The entries of the submenu that opens here, if there is one.
  std::vector<MenuEntry*> submenu;

  void SetClick(std::function<void()> click) { click_ = std::move(click); }
  void Click() {
    if (Enabled() && click_) click_();
  }

 private:
  std::string caption_;
  std::function<void()> click_;
  bool checked_ = false;
};

// One row of a menu: an entry and its fixed properties. A row without an entry is a separator.
struct MenuRow {
  MenuEntry* entry = nullptr;
  const char* name = "";
  const char* caption = "";
  std::function<void()> click{};
  const char* keys = "";
};

// Fills each entry from its row. Returns the entries in their order, null for a separator.
inline std::vector<MenuEntry*> MakeMenu(std::vector<MenuRow> rows) {
  std::vector<MenuEntry*> entries;
  for (MenuRow& row : rows) {
    entries.push_back(row.entry);
    if (row.entry == nullptr) continue;
    row.entry->name = row.name;
    row.entry->keys = row.keys;
    row.entry->SetCaption(row.caption);
    row.entry->SetClick(std::move(row.click));
  }
  return entries;
}

}  // namespace oriolemark

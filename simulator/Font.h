#pragma once

#include <string_view>

namespace tx5000 {

inline constexpr int kGlyphWidth = 5;  // dots
inline constexpr int kGlyphHeight = 7;
inline constexpr int kGlyphAdvance = 6;  // from letter to letter

// Whether a letter's dot is lit; `x` counts from the left, `y` from the top. A letter that the
// instrument cannot write has none.
bool IsLit(char letter, int x, int y);

// The width of a text, from its first dot to its last.
constexpr int WidthOf(std::string_view text) {
  return static_cast<int>(text.size()) * kGlyphAdvance - (kGlyphAdvance - kGlyphWidth);
}

}  // namespace tx5000

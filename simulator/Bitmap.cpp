#include "simulator/Bitmap.h"

#include <algorithm>

#include "simulator/Font.h"

namespace tx5000 {

void Bitmap::Dot(int x, int y, Ink ink) {
  Fill(x, y, x, y, ink);
}

void Bitmap::Fill(int left, int top, int right, int bottom, Ink ink) {
  left = std::max(left, 0);
  right = std::min(right, kScreenWidth - 1);
  bottom = std::min(bottom, kScreenHeight - 1);
  for (int y = std::max(top, 0); y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) {
      pixels_[static_cast<std::size_t>(y * kScreenWidth + x)] = ink;
    }
  }
}

void Bitmap::Write(int x, int y, std::string_view text, Ink ink) {
  for (const char letter : text) {
    for (int dot = 0; dot < kGlyphWidth * kGlyphHeight; ++dot) {
      const int right = dot % kGlyphWidth;
      const int down = dot / kGlyphWidth;
      if (IsLit(letter, right, down)) Dot(x + right, y + down, ink);
    }
    x += kGlyphAdvance;
  }
}

void Bitmap::WriteInverse(int x, int y, std::string_view text, Ink ink) {
  Fill(x - 1, y - 1, x + WidthOf(text), y + kGlyphHeight, ink);
  Write(x, y, text, kDarkInk);
}

}  // namespace tx5000

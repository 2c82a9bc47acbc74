#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// The instrument's own screen: 320 by 240 pixels, one byte each, rows from the top. A byte is a
// colour: three bits of red (the highest), three of green and two of blue. An instrument without
// colours lights every ink except the dark one.
namespace tx5000 {

inline constexpr int kScreenWidth = 320;
inline constexpr int kScreenHeight = 240;
inline constexpr std::size_t kScreenBytes = std::size_t{kScreenWidth} * kScreenHeight;

enum Ink : std::uint8_t {
  kDarkInk = 0x00,
  kGridInk = 0x49,
  kChannel1Ink = 0xFC,
  kChannel2Ink = 0x1F,
  kMathInk = 0xE3,
  kReferenceInk = 0x92,
  kCursorInk = 0x1C,
  kTriggerInk = 0xF0,
  kTextInk = 0xFF,
};

// A dark screen at first. What lies outside of it is not drawn.
class Bitmap {
 public:
  Bitmap() : pixels_(kScreenBytes) {}

  void Dot(int x, int y, Ink ink);
  void Fill(int left, int top, int right, int bottom, Ink ink);  // includes both ends
  // The dots are 7 rows from `y` on; the next letter is 6 columns further.
  void Write(int x, int y, std::string_view text, Ink ink);
  // Dark letters on a lit bar, which is one dot larger on each side.
  void WriteInverse(int x, int y, std::string_view text, Ink ink);

  std::vector<std::uint8_t> Take() { return std::move(pixels_); }

 private:
  std::vector<std::uint8_t> pixels_;
};

}  // namespace tx5000

#include "simulator/Font.h"

#include <algorithm>
#include <iterator>

namespace tx5000 {
namespace {

// Each row of five dots is one digit of base 32: 0 to 9, then A to V. The highest bit is at the
// left.
struct Glyph {
  char letter;
  std::string_view rows;
};

constexpr Glyph kGlyphs[] = {
    {'0', "EHJLPHE"}, {'1', "4C4444E"}, {'2', "EH1248V"}, {'3', "V2421HE"}, {'4', "26AIV22"},
    {'5', "VGU11HE"}, {'6', "68GUHHE"}, {'7', "V124888"}, {'8', "EHHEHHE"}, {'9', "EHHF12C"},
    {'A', "EHHVHHH"}, {'B', "UHHUHHU"}, {'C', "EHGGGHE"}, {'D', "UHHHHHU"}, {'E', "VGGUGGV"},
    {'F', "VGGUGGG"}, {'G', "EHGNHHE"}, {'H', "HHHVHHH"}, {'I', "E44444E"}, {'J', "72222IC"},
    {'K', "HIKOKIH"}, {'L', "GGGGGGV"}, {'M', "HRLLHHH"}, {'N', "HHPLJHH"}, {'O', "EHHHHHE"},
    {'P', "UHHUGGG"}, {'Q', "EHHHLID"}, {'R', "UHHUKIH"}, {'S', "FGGE11U"}, {'T', "V444444"},
    {'U', "HHHHHHE"}, {'V', "HHHHHA4"}, {'W', "HHHLLRH"}, {'X', "HHA4AHH"}, {'Y', "HHA4444"},
    {'Z', "V1248GV"}, {'a', "00E1FHF"}, {'b', "GGUHHHU"}, {'c', "00EGGHE"}, {'d', "11FHHHF"},
    {'e', "00EHVGE"}, {'f', "698S888"}, {'g', "00FHF1E"}, {'h', "GGUHHHH"}, {'i', "40C444E"},
    {'j', "20622IC"}, {'k', "GGIKOKI"}, {'l', "C44444E"}, {'m', "00QLLLL"}, {'n', "00UHHHH"},
    {'o', "00EHHHE"}, {'p', "00UHUGG"}, {'q', "00FHF11"}, {'r', "00MPGGG"}, {'s', "00FGE1U"},
    {'t', "88S8896"}, {'u', "00HHHJD"}, {'v', "00HHHA4"}, {'w', "00HHLLA"}, {'x', "00HA4AH"},
    {'y', "00HHF1E"}, {'z', "00V248V"}, {'.', "00000CC"}, {'-', "000E000"}, {'+', "044V440"},
    {':', "0CC0CC0"}, {'/', "01248G0"}, {'%', "OP248J3"}, {'=', "00V0V00"}, {'<', "248G842"},
    {'>', "8421248"}, {'*', "04LEL40"}, {'_', "000000V"},
};

}  // namespace

bool IsLit(char letter, int x, int y) {
  const auto* const glyph = std::ranges::find(kGlyphs, letter, &Glyph::letter);
  if (glyph == std::end(kGlyphs)) return false;
  const char digit = glyph->rows[static_cast<std::size_t>(y)];
  const int dots = digit <= '9' ? digit - '0' : digit - 'A' + 10;
  return (dots >> (kGlyphWidth - 1 - x) & 1) != 0;
}

}  // namespace tx5000

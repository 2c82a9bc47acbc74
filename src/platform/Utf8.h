#pragma once

#include <string>
#include <string_view>

namespace oriolemark {

// Texts of the instrument and of documents are Latin-1, one byte a character. Paths and captions
// are UTF-8.
inline std::string Utf8Of(std::string_view latin1) {
  std::string text;
  for (const char character : latin1) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x80) {
      text += character;
    } else {
      text += static_cast<char>(0xC0 | (byte >> 6));
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

}  // namespace oriolemark

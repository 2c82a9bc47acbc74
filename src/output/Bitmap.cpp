#include "output/Bitmap.h"

namespace oriolemark {
namespace {

constexpr std::uint32_t kFileHeader = 14;
constexpr std::uint32_t kInfoHeader = 40;
constexpr std::uint32_t kDotsPerMetre = 3780;
constexpr std::size_t kBytesPerPixel = 3;

// Appends a number with its lowest byte first.
void Append(std::string& bytes, std::uint32_t number, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> 8 * i & 0xFF);
}

void AppendHeaders(std::string& bytes, std::uint32_t width, std::uint32_t height,
                   std::uint32_t size) {
  bytes += "BM";
  Append(bytes, kFileHeader + kInfoHeader + size, 4);
  Append(bytes, 0, 4);
  Append(bytes, kFileHeader + kInfoHeader, 4);
  Append(bytes, kInfoHeader, 4);
  Append(bytes, width, 4);
  Append(bytes, height, 4);
  Append(bytes, 1, 2);  // plane
  Append(bytes, 8 * kBytesPerPixel, 2);
  Append(bytes, 0, 4);  // not compressed
  Append(bytes, size, 4);
  Append(bytes, kDotsPerMetre, 4);
  Append(bytes, kDotsPerMetre, 4);
  Append(bytes, 0, 4);  // no palette
  Append(bytes, 0, 4);
}

}  // namespace

std::string BitmapBytes(std::span<const std::uint32_t> pixels, int width) {
  const std::size_t columns = width > 0 ? static_cast<std::size_t>(width) : 0;
  const std::size_t rows = columns == 0 ? 0 : pixels.size() / columns;
  // Each row is filled up to a multiple of four bytes.
  const std::size_t stride = (columns * kBytesPerPixel + 3) / 4 * 4;
  std::string bytes;
  bytes.reserve(kFileHeader + kInfoHeader + rows * stride);
  AppendHeaders(bytes, static_cast<std::uint32_t>(columns), static_cast<std::uint32_t>(rows),
                static_cast<std::uint32_t>(rows * stride));
  bytes.resize(bytes.size() + rows * stride);
  // The file begins with the bottom row.
  for (std::size_t row = 0; row < rows; ++row) {
    char* byte = &bytes[bytes.size() - (row + 1) * stride];
    for (const std::uint32_t pixel : pixels.subspan(row * columns, columns)) {
      for (const int shift : {0, 8, 16}) *byte++ = static_cast<char>(pixel >> shift & 0xFF);
    }
  }
  return bytes;
}

}  // namespace oriolemark

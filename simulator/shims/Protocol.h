#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The protocol between the simulator and the stand-ins for the instrument's libraries, on a Unix
// stream socket. Numbers are little-endian.
//
// The library asks; the simulator answers each request in turn with one answer:
//   request: length (4 bytes, of what follows), kind (1 byte), arguments
//   answer:  length (4 bytes, of what follows), outcome (1 byte), result
// The first request is kOpen. Whoever breaks a rule or exceeds a bound is cut off without an
// answer.
namespace tx5000::protocol {

inline constexpr std::uint32_t kMostBytes = 65536;  // of data in one request or answer
inline constexpr std::uint32_t kLongestRequest = kMostBytes + 16;
inline constexpr std::uint32_t kLongestAnswer = 256 * 1024;  // the whole screen fits
inline constexpr std::size_t kLengthSize = 4;

enum Kind : char {
  // The connector: 'g' and the GPIB address, or 'u' and any byte. kNobody if no instrument has this
  // address; the library may ask again.
  kOpen = 'o',
  // 1 if END comes with the last byte, otherwise 0, then the bytes.
  kWrite = 'w',
  // The most bytes wanted (4 bytes, 1 to kMostBytes) and the time-out in ms (4 bytes, 0: for ever).
  // Answered when so many bytes are there or at END: 1 at END, otherwise 0, then the bytes. kFailed
  // after the time-out, with the bytes so far.
  kRead = 'r',
  kClear = 'c',    // no arguments; empties the instrument's buffers
  kWaiting = 'n',  // no arguments; how many bytes wait (4 bytes)
  kFetch = 'f',    // how many (4 bytes, 0 to kMostBytes); so many bytes, or kFailed
  kControl = 'q',  // request (1 byte), value (2 bytes), index (2 bytes); no result, or kFailed
  kBulkRead = 'b'  // how many (4 bytes); so many bytes, or kFailed
};

enum Outcome : char { kDone = 0, kFailed = 1, kNobody = 2 };

inline std::string PackNumber(std::uint32_t number, int bytes) {
  std::string packed;
  for (int i = 0; i < bytes; ++i) packed += static_cast<char>(number >> 8 * i & 0xFF);
  return packed;
}

// Reads the first `bytes` bytes, or fewer if there are fewer.
inline std::uint32_t UnpackNumber(std::string_view packed, std::size_t bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < bytes && i < packed.size(); ++i) {
    number |= std::uint32_t{static_cast<unsigned char>(packed[i])} << 8 * i;
  }
  return number;
}

inline std::string PackMessage(char head, std::string_view rest) {
  const auto length = static_cast<std::uint32_t>(rest.size() + 1);
  return PackNumber(length, kLengthSize) + head + std::string(rest);
}

}  // namespace tx5000::protocol

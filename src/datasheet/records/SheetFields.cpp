#include "datasheet/records/SheetFields.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "values/Number.h"

namespace oriolemark {
namespace {

constexpr std::string_view kTrue = "#TRUE#";
constexpr std::string_view kFalse = "#FALSE#";
constexpr std::string_view kLineEnd = "\r\n";

// Enough for any number and its line end: a double has at most 17 digits and 6 zeros before them.
constexpr std::size_t kLongestNumber = 32;

// Eight bytes hold these digits with CR and LF.
constexpr int kShortDigits = 6;
constexpr std::ptrdiff_t kLongestShort = 8;

// The same byte eight times.
constexpr std::uint64_t Eight(std::uint8_t byte) {
  return 0x0101010101010101U * byte;
}

// How many of the bytes, from the lowest on, are digits. The sum sets the highest bit of a byte
// above '9', and the masks keep it from reaching the next byte.
int CountDigits(std::uint64_t word) {
  const std::uint64_t values = word ^ Eight('0');
  const std::uint64_t others = ((values & Eight(0x7F)) + Eight(0x80 - 10)) | values;
  return std::countr_zero(others & Eight(0x80)) / 8;
}

// The number of up to eight digits in the upper bytes; bytes of 0 may stand below them. Joins
// neighbours to numbers of two, four and eight digits.
std::int32_t NumberOf(std::uint64_t digits) {
  std::uint64_t number = digits & Eight(0x0F);
  number = (number * 10 + (number >> 8)) & 0x00FF00FF00FF00FF;
  number = (number * 100 + (number >> 16)) & 0x0000FFFF0000FFFF;
  number = number * 10000 + (number >> 32);
  return static_cast<std::int32_t>(number & 0xFFFFFFFF);
}

// Stores a field of at most six digits, without a sign, on a line of its own. Returns what is
// behind it, or nothing if the field has another form. Looks at eight bytes at once, because
// samples vary in length, and every branch on it would be guessed wrong half of the time. The
// branches that are here go the same way at nearly every line.
const char* TakeDigits(const char* from, const char* end, std::int32_t& value) {
  if (std::endian::native != std::endian::little || end - from < kLongestShort) return nullptr;
  std::uint64_t word = 0;
  std::memcpy(&word, from, sizeof word);
  const int length = CountDigits(word);
  if (length == 0 || length > kShortDigits) return nullptr;
  const std::uint64_t behind = word >> (8 * length);
  const bool isCrLf = (behind & 0xFFFF) == 0x0A0D;
  if (!isCrLf && (behind & 0xFF) != '\n') return nullptr;
  value = NumberOf(word << (64 - 8 * length));
  if (isCrLf) [[likely]]
    return from + length + 2;
  return from + length + 1;
}

// The same with or without a minus sign.
const char* TakeShort(const char* from, const char* end, std::int32_t& value) {
  if (const char* const behind = TakeDigits(from, end, value)) return behind;
  if (from == end || *from != '-') return nullptr;
  const char* const behind = TakeDigits(from + 1, end, value);
  if (behind != nullptr) value = -value;
  return behind;
}

bool IsWord(std::string_view text, std::string_view word) {
  const auto upper = [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  };
  return std::ranges::equal(text, word, {}, upper);
}

// Returns the first mark or LF, or the end.
const char* Find(const char* from, const char* end, char mark) {
  while (from != end && *from != mark && *from != '\n') ++from;
  return from;
}

template <typename Whole>
void StoreWhole(std::optional<std::string_view> field, Whole& value) {
  using Limits = std::numeric_limits<Whole>;
  if (!field) return;
  const auto number = WholeNumberInReply(*field, Limits::min(), Limits::max());
  if (number) value = static_cast<Whole>(*number);
}

// A whole number with its line end.
struct ReadyLine {
  std::array<char, 7> text{};
  std::uint8_t size = 0;
};

// The lines of the numbers that nearly all samples are: a byte less an offset.
constexpr std::int32_t kFirstReady = -64;
constexpr auto kReadyLines = [] {
  std::array<ReadyLine, 384> lines;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    ReadyLine& line = lines[i];
    const int number = static_cast<int>(i) + kFirstReady;
    const int digits = number < 0 ? -number : number;
    if (number < 0) line.text[line.size++] = '-';
    for (const int place : {100, 10, 1}) {
      if (digits < place && place > 1) continue;
      line.text[line.size++] = static_cast<char>('0' + digits / place % 10);
    }
    for (const char c : kLineEnd) line.text[line.size++] = c;
  }
  return lines;
}();

// Writes without an exponent where that takes no long row of zeros.
char* PutDouble(char* to, double value) {
  // A text for infinity would read back as no number, and the field would keep an old value.
  if (!std::isfinite(value)) {
    value = std::isnan(value) ? 0 : std::copysign(std::numeric_limits<double>::max(), value);
  }
  const double size = std::abs(value);
  const bool plain = size == 0 || (size >= 1e-7 && size < 1e16);
  char* const end = std::to_chars(to, to + kLongestNumber, value,
                                  plain ? std::chars_format::fixed : std::chars_format::scientific)
                        .ptr;
  std::replace(to, end, 'e', 'E');
  return end;
}

}  // namespace

std::optional<std::string_view> FieldReader::Take() {
  if (AtEnd()) return std::nullopt;
  const bool quoted = *next_ == '"';
  const char* const begin = quoted ? next_ + 1 : next_;
  const char* close = Find(begin, end_, quoted ? '"' : ',');
  // Bytes between a closing quote and the end of the field are dropped.
  const char* const stop = quoted ? Find(close, end_, ',') : close;
  next_ = stop == end_ ? end_ : stop + 1;
  const bool toLineEnd = close == end_ || *close == '\n';
  if (toLineEnd && close != begin && close[-1] == '\r') --close;
  return std::string_view(begin, static_cast<std::size_t>(close - begin));
}

void FieldReader::Take(std::string& value, std::size_t longest) {
  if (const auto field = Take()) value = field->substr(0, longest);
}

void FieldReader::operator()(bool& value) {
  const auto field = Take();
  if (!field) return;
  if (IsWord(*field, kTrue) || IsWord(*field, kFalse)) {
    value = IsWord(*field, kTrue);
  } else if (const auto number = NumberInReply(*field)) {
    value = *number != 0;
  }
}

void FieldReader::operator()(std::int32_t& value) {
  (*this)(std::span(&value, 1));
}

// The place is kept in a variable of its own, which is faster than the member.
void FieldReader::operator()(std::span<std::int32_t> values) {
  const char* next = next_;
  for (std::int32_t& value : values) {
    if (next == end_) break;
    if (const char* const behind = TakeShort(next, end_, value)) {
      next = behind;
    } else {
      next_ = next;
      StoreWhole(Take(), value);
      next = next_;
    }
  }
  next_ = next;
}

void FieldReader::operator()(std::int16_t& value) {
  StoreWhole(Take(), value);
}

void FieldReader::operator()(double& value) {
  const auto field = Take();
  if (const auto number = field ? NumberInReply(*field) : std::nullopt) value = *number;
}

char* FieldWriter::Room(std::size_t bytes) {
  constexpr std::size_t kPiece = std::size_t{1} << 16;
  if (bytes_.size() - size_ < bytes) bytes_.resize(bytes_.size() * 2 + bytes + kPiece);
  return bytes_.data() + size_;
}

void FieldWriter::operator()(std::string_view value) {
  char* const to = Room(value.size() + 2 + kLineEnd.size());
  *to = '"';
  char* const close = std::copy(value.begin(), value.end(), to + 1);
  *close = '"';
  std::copy(kLineEnd.begin(), kLineEnd.end(), close + 1);
  size_ += value.size() + 2 + kLineEnd.size();
}

void FieldWriter::operator()(bool value) {
  const std::string_view word = value ? kTrue : kFalse;
  char* const to = Room(word.size() + kLineEnd.size());
  std::ranges::copy(kLineEnd, std::ranges::copy(word, to).out);
  size_ += word.size() + kLineEnd.size();
}

void FieldWriter::operator()(std::int32_t value) {
  char* const to = Room(kLongestNumber);
  const auto ready = static_cast<std::size_t>(std::int64_t{value} - kFirstReady);
  if (ready < kReadyLines.size()) {
    const ReadyLine& line = kReadyLines[ready];
    std::memcpy(to, line.text.data(), line.text.size());
    size_ += line.size;
    return;
  }
  char* const end = std::to_chars(to, to + kLongestNumber, value).ptr;
  size_ += static_cast<std::size_t>(std::ranges::copy(kLineEnd, end).out - to);
}

void FieldWriter::operator()(double value) {
  char* const to = Room(kLongestNumber);
  size_ += static_cast<std::size_t>(std::ranges::copy(kLineEnd, PutDouble(to, value)).out - to);
}

std::string FieldWriter::TakeBytes() {
  bytes_.resize(std::exchange(size_, 0));
  return std::exchange(bytes_, {});
}

}  // namespace oriolemark

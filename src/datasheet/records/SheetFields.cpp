#include "datasheet/records/SheetFields.h"

#include <algorithm>
#include <array>
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

constexpr std::ptrdiff_t kShortDigits = 9;
// A sign, the digits, CR and LF.
constexpr std::ptrdiff_t kLongestShort = kShortDigits + 3;

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
  // What is between a closing quote and the end of the field is dropped.
  const char* const stop = quoted ? Find(close, end_, ',') : close;
  next_ = stop == end_ ? end_ : stop + 1;
  const bool toLineEnd = close == end_ || *close == '\n';
  if (toLineEnd && close != begin && close[-1] == '\r') --close;
  return std::string_view(begin, static_cast<std::size_t>(close - begin));
}

bool FieldReader::TakeShort(std::int32_t& value) {
  if (end_ - next_ < kLongestShort) return false;
  const bool negative = *next_ == '-';
  const char* const digits = next_ + (negative ? 1 : 0);
  const char* at = digits;
  std::int32_t number = 0;
  while (at != digits + kShortDigits && *at >= '0' && *at <= '9')
    number = number * 10 + *at++ - '0';
  const char* const lineEnd = *at == '\r' ? at + 1 : at;
  if (at == digits || *lineEnd != '\n') return false;
  value = negative ? -number : number;
  next_ = lineEnd + 1;
  return true;
}

void FieldReader::operator()(std::string& value) {
  if (const auto field = Take()) value = *field;
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
  if (!TakeShort(value)) StoreWhole(Take(), value);
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

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace oriolemark {

// The values of a data sheet's file, one after another, without tags. Each is on a line of its own:
// a text in double quotes, #TRUE# or #FALSE#, or a number.

// Takes field after field from the bytes of a file, which must outlive it. A field ends at LF, with
// or without a CR before it, or at a comma outside quotes. A field that is missing, or is no value
// of its type, leaves the variable unchanged.
class FieldReader {
 public:
  explicit FieldReader(std::string_view bytes)
      : next_(bytes.data()), end_(bytes.data() + bytes.size()) {}

  // In bytes; far above any name or reply. What a text of a file holds is shown on the screen.
  static constexpr std::size_t kLongestText = std::size_t{1} << 20;

  bool AtEnd() const { return next_ == end_; }

  // Stores what is between the quotes, or a whole field that has no opening quote, but no more than
  // `longest` bytes.
  void Take(std::string& value, std::size_t longest);
  void operator()(std::string& value) { Take(value, kLongestText); }
  // #TRUE# and #FALSE# count in any case. A number is true unless it is 0.
  void operator()(bool& value);
  // Any form of a number counts and is rounded to the nearest whole number, ties to even. A number
  // outside the variable's range is no value.
  void operator()(std::int32_t& value);
  void operator()(std::span<std::int32_t> values);
  void operator()(std::int16_t& value);
  void operator()(double& value);
  void Skip() { Take(); }

 private:
  std::optional<std::string_view> Take();

  const char* next_;
  const char* end_;
};

// Joins fields to the bytes of a file. Nothing in a text is escaped.
class FieldWriter {
 public:
  // Fewer or more bytes than expected are fine, but more take longer.
  explicit FieldWriter(std::size_t expected) : bytes_(expected, '\0') {}

  void operator()(std::string_view value);
  void operator()(bool value);
  void operator()(std::int32_t value);
  // Writes the shortest digits that read back the same.
  void operator()(double value);

  // Returns what was written. The writer is empty then.
  std::string TakeBytes();

 private:
  // Returns a place for so many bytes. The caller fills it and adds to `size_`.
  char* Room(std::size_t bytes);

  std::string bytes_;  // of which the first `size_` are written
  std::size_t size_ = 0;
};

}  // namespace oriolemark

#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace oriolemark {

// Builds the text of an exported table: lines that end in CR LF, with TAB between the cells of a
// row. Nothing in a text is escaped.
class TextTable {
 public:
  // A line of its own.
  void AddLine(std::string_view text);
  void AddEmptyLines(int count);
  void AddRow(std::initializer_list<std::string_view> cells);

  // Returns the lines so far. The table is empty then.
  std::string TakeBytes() { return std::exchange(bytes_, {}); }

 private:
  std::string bytes_;
};

}  // namespace oriolemark

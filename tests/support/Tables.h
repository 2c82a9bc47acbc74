#pragma once

#include <algorithm>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace oriolemark {

// Conditions side by side, '1' or '0' each, so that a failure shows which of them it is.
template <typename... Conditions>
std::string Bits(const Conditions&... conditions) {
  return (... + std::string(conditions ? "1" : "0"));
}

// The pieces of a text, which may be empty, between marks.
inline std::vector<std::string> Split(std::string_view text, char mark) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  for (;;) {
    const std::size_t end = text.find(mark);
    pieces.emplace_back(text.substr(0, end));
    if (end == text.npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

// With each mark replaced.
inline std::string Filled(std::string text, char mark, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(mark)) != text.npos;) text.replace(at, 1, by);
  return text;
}

// The cells of a table: rows end in a line end or " || ", " | " stands between cells, and "-" is an
// empty one. A line that begins with blanks goes on where the one before it ends.
inline std::vector<std::vector<std::string>> Rows(const std::string& table) {
  static const std::regex kRow("\n| \\|\\| "), kBar(" \\| "), kGoesOn("\n +");
  const auto split = [](const std::string& text, const std::regex& at) {
    return std::vector<std::string>(std::sregex_token_iterator(text.begin(), text.end(), at, -1),
                                    {});
  };
  std::vector<std::vector<std::string>> rows;
  for (const std::string& row : split(std::regex_replace(table, kGoesOn, " "), kRow)) {
    if (row.empty()) continue;
    rows.push_back(split(row, kBar));
    std::ranges::replace(rows.back(), std::string("-"), std::string());
  }
  return rows;
}

}  // namespace oriolemark

#pragma once

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace oriolemark {

// The cells of a table: rows end in a line end or " || ", " | " stands between cells, and "-" is an
// empty one.
inline std::vector<std::vector<std::string>> Rows(const std::string& table) {
  static const std::regex kRow("\n| \\|\\| ");
  static const std::regex kBar(" \\| ");
  const auto split = [](const std::string& text, const std::regex& at) {
    return std::vector<std::string>(std::sregex_token_iterator(text.begin(), text.end(), at, -1),
                                    {});
  };
  std::vector<std::vector<std::string>> rows;
  for (const std::string& row : split(table, kRow)) {
    if (row.empty()) continue;
    rows.push_back(split(row, kBar));
    std::ranges::replace(rows.back(), std::string("-"), std::string());
  }
  return rows;
}

}  // namespace oriolemark

#include "cli/Names.h"

#include <algorithm>

namespace oriolemark {
namespace {

constexpr std::size_t kMostNames = 3;

char Lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

// The number of letters to add, drop or replace until the second text ends with the first one.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
    }
  }
  return row.back();
}

}  // namespace

std::string Plain(std::string_view name) {
  std::string plain;
  for (const char letter : name) {
    const char lower = Lower(letter);
    const bool kept = (lower >= 'a' && lower <= 'z') || (lower >= '0' && lower <= '9') ||
                      lower == '+' || lower == '-';
    if (kept) plain += lower;
  }
  return plain;
}

std::string Folded(std::string_view text) {
  std::string folded;
  for (const char letter : text) {
    if (letter != ' ') folded += Lower(letter);
  }
  return folded;
}

std::string DidYouMean(std::string_view typed, const std::vector<std::string>& names) {
  constexpr std::size_t kLongest = 64;  // of a name that is worth comparing
  const std::string plain = Plain(typed.substr(0, kLongest));
  std::vector<std::pair<std::size_t, std::string>> near;
  for (const std::string& name : names) {
    const std::size_t distance = Distance(plain, Plain(name));
    if (distance < plain.size() && distance <= 1 + plain.size() / 3)
      near.emplace_back(distance, name);
  }
  std::ranges::stable_sort(near, {}, &std::pair<std::size_t, std::string>::first);
  near.resize(std::min(near.size(), kMostNames));
  std::string question;
  for (std::size_t i = 0; i < near.size(); ++i) {
    if (i != 0) question += i + 1 == near.size() ? " or " : ", ";
    question += "\"" + near[i].second + "\"";
  }
  return question.empty() ? "" : " Did you mean " + question + "?";
}

std::string ExtensionOf(const std::string& path) {
  const std::size_t point = path.rfind('.');
  if (point == std::string::npos || path.find('/', point) != std::string::npos) return {};
  std::string extension = path.substr(point);
  std::ranges::transform(extension, extension.begin(), Lower);
  return extension;
}

bool IsPicture(const std::string& path) {
  const std::string extension = ExtensionOf(path);
  return extension == ".bmp" || extension == ".png";
}

}  // namespace oriolemark

#include "cli/Rendering.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "platform/Utf8.h"
#include "values/Number.h"

namespace oriolemark {
namespace {

using Json = nlohmann::ordered_json;

std::string NameOf(const std::string& name, const std::string& unit) {
  return Utf8Of(unit.empty() ? name : name + "_" + unit);
}

bool IsControl(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return (byte < ' ' && byte != '\n' && byte != '\t') || byte == 0x7F;
}
// The same for the control characters in the upper half of Latin-1.
bool IsHighControl(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte >= 0x80 && byte < 0xA0;
}

// Quoted where it has to be.
std::string Cell(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char character : text) quoted += character == '"' ? "\"\"" : std::string(1, character);
  return quoted + '"';
}

// With 15 digits: more only show how a computer rounds.
double Rounded(double number) {
  if (std::isnan(number)) return number;
  return LeadingNumber(NumberText(number));
}

std::string CellOf(const Value& value) {
  if (value.unit.empty()) return Cell(Printable(value.text));
  return value.number ? NumberText(*value.number) : "";
}

template <typename Items, typename MakeCell>
std::string Line(const Items& items, MakeCell makeCell) {
  std::string line;
  for (const auto& item : items) line += makeCell(item) + ',';
  if (!line.empty()) line.back() = '\n';
  return line;
}

Json ObjectOf(const Result& result, const std::string& time) {
  if (result.parts) {
    Json list = Json::array();
    for (const Result& part : *result.parts) list.push_back(ObjectOf(part, time));
    return list;
  }
  Json object = Json::object();
  if (!time.empty()) object["time"] = time;
  if (!result.name.empty()) object["name"] = Utf8Of(result.name);
  for (const Value& value : result.values) {
    Json& place = object[NameOf(value.name, value.unit)];
    if (value.unit.empty()) {
      place = Utf8Of(value.text);
    } else if (value.number) {
      place = Rounded(*value.number);
    }
  }
  for (const SampleColumn& column : result.columns) {
    Json& list = object[NameOf(column.name, column.unit)] = Json::array();
    for (const double number : column.values) {
      if (column.unit.empty()) {
        list.push_back(static_cast<std::int64_t>(number));
      } else {
        list.push_back(Rounded(number));
      }
    }
  }
  return object;
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string printable(text);
  std::ranges::replace_if(
      printable, [](char character) { return IsControl(character) || IsHighControl(character); },
      '?');
  return Utf8Of(printable);
}

std::string ErrorLine(const std::string& text) {
  return "oriolemark-cli: " + LinesOf(text) + "\n";
}

std::string LinesOf(std::string message) {
  std::ranges::replace(message, '\r', '\n');
  std::ranges::replace_if(message, IsControl, '?');
  return message;
}

std::string TextOf(const Result& result) {
  if (!result.text.empty()) return Printable(result.text) + '\n';
  if (result.parts) {
    std::string text;
    for (const Result& part : *result.parts) {
      text += (text.empty() ? "" : "\n") + Printable("[" + part.name + "]") + '\n' + TextOf(part);
    }
    return text;
  }
  std::size_t width = 0;
  for (const Value& value : result.values) width = std::max(width, value.name.size());
  std::string text;
  for (const Value& value : result.values) {
    std::string name = value.name;
    name.resize(width + 2, ' ');
    text += Printable(name + value.text) + '\n';
  }
  return text;
}

std::string CsvHead(const Result& result) {
  if (result.parts) return result.parts->empty() ? "" : CsvHead(result.parts->front());
  const auto head = [](const auto& item) { return Cell(NameOf(item.name, item.unit)); };
  return result.columns.empty() ? Line(result.values, head) : Line(result.columns, head);
}

std::string CsvRows(const Result& result) {
  std::string rows;
  if (result.parts) {
    for (const Result& part : *result.parts) rows += CsvRows(part);
    return rows;
  }
  if (result.columns.empty()) return Line(result.values, CellOf);
  for (std::size_t i = 0; i < result.columns.front().values.size(); ++i) {
    rows += Line(result.columns, [i](const auto& column) {
      return std::isnan(column.values[i]) ? "" : NumberText(column.values[i]);
    });
  }
  return rows;
}

std::string JsonOf(const Result& result, const std::string& time) {
  return ObjectOf(result, time).dump() + '\n';
}

}  // namespace oriolemark

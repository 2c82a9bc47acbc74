#include "output/TextTable.h"

namespace oriolemark {

void TextTable::AddLine(std::string_view text) {
  AddRow({text});
}

void TextTable::AddEmptyLines(int count) {
  for (int i = 0; i < count; ++i) AddRow({});
}

void TextTable::AddRow(std::initializer_list<std::string_view> cells) {
  const char* mark = "";
  for (const std::string_view cell : cells) {
    bytes_ += mark;
    bytes_ += cell;
    mark = "\t";
  }
  bytes_ += "\r\n";
}

}  // namespace oriolemark

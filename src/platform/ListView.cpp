#include "platform/ListView.h"

#include <algorithm>
#include <utility>

namespace oriolemark {

ListView::ListView(std::vector<std::string> columns) : columns_(std::move(columns)) {}

void ListView::SetRows(ListRows rows) {
  rows.count = std::max(0, rows.count);
  if (rows.count != rows_.count) selected_.clear();
  rows_ = std::move(rows);
  if (onRows) onRows();
}

bool ListView::Holds(int row, int column) const {
  return row >= 0 && row < Count() && column >= 0 && column < ColumnCount();
}

std::string ListView::Text(int row, int column) const {
  return rows_.text && Holds(row, column) ? rows_.text(row, column) : std::string();
}

int ListView::Picture(int row, int column) const {
  return rows_.picture && Holds(row, column) ? rows_.picture(row, column) : 0;
}

void ListView::NoteWidth(double units) {
  if (units == width_) return;
  width_ = units;
  if (resized) resized();
}

void ListView::SetColumnWidths(std::vector<double> units) {
  for (double& width : units) width = std::max(0.0, width);
  Change(widths_, units);
}

void ListView::Select(std::vector<RowSpan> spans) {
  std::ranges::sort(spans, {}, &RowSpan::first);
  std::vector<RowSpan> selected;
  for (const RowSpan& span : spans) {
    // Rows of an earlier span are left out, so that no row is copied twice.
    const int first = std::max(span.first, selected.empty() ? 0 : selected.back().last + 1);
    const int last = std::min(span.last, Count() - 1);
    if (first <= last) selected.push_back({first, last});
  }
  Change(selected_, selected);
}

std::string ListView::SelectedText() const {
  std::string text;
  if (!rows_.text) return text;
  for (const RowSpan& span : selected_) {
    for (int row = span.first; row <= span.last; ++row) {
      for (int column = 0; column < ColumnCount(); ++column) {
        if (column > 0) text += '\t';
        text += rows_.copied ? rows_.copied(row, column) : Text(row, column);
      }
      text += "\r\n";
    }
  }
  return text;
}

}  // namespace oriolemark

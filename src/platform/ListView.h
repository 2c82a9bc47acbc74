#pragma once

#include <string>
#include <vector>

#include "platform/Control.h"

namespace oriolemark {

// The contents of a list: rows and cells on demand, so that a long list opens at once. The
// functions are only called for cells inside the list.
struct ListRows {
  int count = 0;
  std::function<std::string(int row, int column)> text{};  // 8-bit; empty cells if left out
  std::function<int(int row, int column)> picture{};       // from 1 on; 0 is no picture
  // The text of a cell in a copy, where it differs from the shown one.
  std::function<std::string(int row, int column)> copied{};
};

// Rows that follow each other, both ends included.
struct RowSpan {
  int first = 0;
  int last = 0;
  bool operator==(const RowSpan&) const = default;
};

// A table with column titles. Any number of its rows may be selected.
class ListView : public Control {
 public:
  explicit ListView(std::vector<std::string> columns);

  const std::vector<std::string>& Columns() const { return columns_; }
  int ColumnCount() const { return static_cast<int>(columns_.size()); }

  // Replaces the contents. With as many rows as before, which a refresh brings, the selection
  // stays; otherwise no row is selected. A negative count gives an empty list.
  void SetRows(ListRows rows);
  // The second listener on the toolkit's side: the contents have been replaced.
  std::function<void()> onRows;
  int Count() const { return rows_.count; }
  // Empty, or no picture, for a cell outside the list.
  std::string Text(int row, int column) const;
  int Picture(int row, int column) const;

  // The toolkit's side reports the width of the whole list, in window units. `resized` is the
  // form's handler, which places the columns.
  void NoteWidth(double units);
  double Width() const { return width_; }
  std::function<void()> resized;
  // In window units, the first column first. Negative widths count as 0.
  void SetColumnWidths(std::vector<double> units);
  const std::vector<double>& ColumnWidths() const { return widths_; }

  // The rows that the user marks, in any order. Rows outside the list are left out.
  void Select(std::vector<RowSpan> spans);
  void SelectAll() { Select({{0, Count() - 1}}); }
  // In the order of the rows. No row is in two spans.
  const std::vector<RowSpan>& Selected() const { return selected_; }
  // The selected rows: cells joined by TAB, a CR LF behind each row.
  std::string SelectedText() const;

 private:
  bool Holds(int row, int column) const;

  const std::vector<std::string> columns_;
  ListRows rows_;
  double width_ = 0;
  std::vector<double> widths_;
  std::vector<RowSpan> selected_;
};

}  // namespace oriolemark

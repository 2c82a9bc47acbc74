#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace oriolemark {

// Where the points of a trace lie across a picture. All traces of a record share one plan, and it
// serves until their count or the zoom changes.
class TracePlan {
 public:
  // A pixel column that holds points, and the first of them. The last one is before the first of
  // the next column.
  struct Column {
    int x;
    std::size_t first;
  };

  TracePlan() = default;
  // The positions in pixels, from left to right.
  explicit TracePlan(std::vector<double> x);

  std::span<const double> X() const { return x_; }
  // The columns from left to right. Empty if a column has fewer than two points on average, or if a
  // point is too far away to be counted in pixels: such a trace is drawn line by line.
  std::span<const Column> Columns() const { return columns_; }
  std::size_t EndOf(std::size_t column) const {
    return column + 1 < columns_.size() ? columns_[column + 1].first : x_.size();
  }

 private:
  std::vector<double> x_;
  std::vector<Column> columns_;
};

}  // namespace oriolemark

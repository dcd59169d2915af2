#pragma once

#include <vector>

#include "text/String.h"

namespace quenmar {

/// A matrix of texts in one array. Rows after the last written one are counted but not stored, so
/// that empty rows need no memory.
class CellMatrix {
 public:
  CellMatrix(int rows, int cols) : rows_(rows), cols_(cols) {}

  [[nodiscard]] int Rows() const { return rows_; }
  [[nodiscard]] int Cols() const { return cols_; }
  [[nodiscard]] bool Has(int row, int col) const {
    return row >= 0 && row < rows_ && col >= 0 && col < cols_;
  }

  /// Change the size. Cells inside the new size keep their texts.
  /// @param rows, cols at least 1
  void SetRows(int rows);
  void SetCols(int cols);

  /// @return the text of a cell that the matrix has; valid until the matrix changes.
  [[nodiscard]] StringView Text(int row, int col) const;
  void SetText(int row, int col, StringView text);

  /// Empties every cell.
  void Clear() { cells_.clear(); }

 private:
  [[nodiscard]] size_t Position(int row, int col) const {
    return static_cast<size_t>(row) * static_cast<size_t>(cols_) + static_cast<size_t>(col);
  }

  int rows_;
  int cols_;
  std::vector<String> cells_;  // row by row, whole rows only
};

}  // namespace quenmar

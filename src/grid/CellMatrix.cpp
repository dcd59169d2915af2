#include "grid/CellMatrix.h"

#include <algorithm>
#include <utility>

namespace quenmar {

void CellMatrix::SetRows(int rows) {
  const size_t end = Position(rows, 0);
  if (end < cells_.size()) cells_.resize(end);
  rows_ = rows;
}

void CellMatrix::SetCols(int cols) {
  if (cols == cols_) return;
  const size_t held = cells_.size() / static_cast<size_t>(cols_);
  const auto from = static_cast<size_t>(cols_);
  const auto to = static_cast<size_t>(cols);
  std::vector<String> cells(held * to);
  for (size_t row = 0; row < held; ++row) {
    for (size_t col = 0; col < std::min(from, to); ++col) {
      cells[row * to + col] = std::move(cells_[row * from + col]);
    }
  }
  cells_ = std::move(cells);
  cols_ = cols;
}

StringView CellMatrix::Text(int row, int col) const {
  const size_t position = Position(row, col);
  return position < cells_.size() ? StringView(cells_[position]) : StringView();
}

void CellMatrix::SetText(int row, int col, StringView text) {
  const size_t position = Position(row, col);
  if (position >= cells_.size()) {
    if (text.empty()) return;
    const String copy(text);  // `text` may be part of this matrix, which moves now
    cells_.resize(Position(row, 0) + static_cast<size_t>(cols_));
    cells_[position] = copy;
    return;
  }
  cells_[position] = text;
}

}  // namespace quenmar

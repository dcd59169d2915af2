#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "grid/xEditGrid.h"

namespace quenmar {

/// How a cell is shown beside its text.
struct CellMarks {
  bool bold = false;
  bool struckOut = false;
  bool pale = false;
  String sign;    ///< is shown before the text
  String remark;  ///< the tool tip, which is read out, too
};

/// @param row, col by the grid's own count
using CellMarksOf = std::function<CellMarks(int row, int col)>;

/// @return what the mark in the row's head means; empty for a row without one.
using RowRemarkOf = std::function<String(int row)>;

/// The cells of an `xEditGrid` as the toolkit's views want them: the header row is the header, and
/// row 1 of the grid is row 0 here. Nothing is copied or made per row.
class EditGridModel : public QAbstractTableModel {
 public:
  /// What views can ask for besides the toolkit's roles.
  enum Role {
    kWarning = Qt::UserRole,  ///< why the cell is framed; empty for others
    kPale,                    ///< whether the text is pale
    kSign,                    ///< what is shown before the text and is not part of it
  };

  /// @param grid outlives every use of the model
  EditGridModel(const xEditGrid& grid, QObject* parent);

  /// Gives editable cells a tool tip where their text will change when the saved file is read.
  /// @param warning as in `ReadBackWarning`
  void SetWarning(const String& warning) { warning_ = warning; }

  /// Marks cells and rows from now on.
  void SetMarks(CellMarksOf cells, RowRemarkOf rows);

  /// Shows a grid that was filled again.
  void Reload();

  /// Notifies the views of changed texts and added rows after an action.
  void Follow();

  /// @return the index of a cell by the grid's own count; invalid for the header row.
  [[nodiscard]] QModelIndex IndexOf(int row, int col) const { return index(row - 1, col); }

  /// @return the row in the grid's own count.
  [[nodiscard]] static int RowOf(const QModelIndex& index) { return index.row() + 1; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  [[nodiscard]] int DataRows() const { return grid_.Rows() - 1; }

  [[nodiscard]] QString Remark(const QModelIndex& index) const;
  [[nodiscard]] QVariant RowHead(int section, int role) const;

  const xEditGrid& grid_;
  CellMarksOf marks_ = [](int, int) { return CellMarks(); };
  RowRemarkOf rowRemark_ = [](int) { return String(); };
  String warning_;
  // What the views know of; the grid may be ahead until they are notified.
  int rows_;
  int cols_;
};

}  // namespace quenmar

#include "editor/EditGridModel.h"

#include <QFont>
#include <utility>

#include "widgets/QtText.h"
#include "widgets/ValueEdit.h"

namespace quenmar {

EditGridModel::EditGridModel(const xEditGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid), rows_(DataRows()), cols_(grid.Cols()) {}

void EditGridModel::SetMarks(CellMarksOf cells, RowRemarkOf rows) {
  marks_ = std::move(cells);
  rowRemark_ = std::move(rows);
}

void EditGridModel::Reload() {
  beginResetModel();
  rows_ = DataRows();
  cols_ = grid_.Cols();
  endResetModel();
}

void EditGridModel::Follow() {
  if (cols_ != grid_.Cols() || rows_ > DataRows()) {
    Reload();
    return;
  }
  if (rows_ < DataRows()) {
    beginInsertRows({}, rows_, DataRows() - 1);
    rows_ = DataRows();
    endInsertRows();
  }
  // A handler of an edit may change other cells, too; the views paint only what they show.
  if (rows_ == 0) return;
  emit dataChanged(index(0, 0), index(rows_ - 1, cols_ - 1));
  emit headerDataChanged(Qt::Vertical, 0, rows_ - 1);
}

int EditGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int EditGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : cols_;
}

QVariant EditGridModel::data(const QModelIndex& index, int role) const {
  const bool held = index.isValid() && RowOf(index) < grid_.Rows() && index.column() < grid_.Cols();
  if (!held) return {};
  const int row = RowOf(index);
  const int col = index.column();
  switch (role) {
    case Qt::DisplayRole:
      return ToQString(grid_.Text(row, col));
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return Remark(index);
    case Qt::FontRole: {
      const CellMarks marks = marks_(row, col);
      if (!marks.bold && !marks.struckOut) return {};
      QFont font;  // all but this comes from the view's
      if (marks.bold) font.setBold(true);
      if (marks.struckOut) font.setStrikeOut(true);
      return font;
    }
    case kPale:
      return marks_(row, col).pale;
    case kSign:
      return ToQString(marks_(row, col).sign);
    case kWarning:
      if (grid_.ReadOnly(col)) return {};
      return ReadBackWarning(grid_.Text(row, col), warning_);
    default:
      return {};
  }
}

QString EditGridModel::Remark(const QModelIndex& index) const {
  const QString warning = index.data(kWarning).toString();
  const QString remark = ToQString(marks_(RowOf(index), index.column()).remark);
  return warning.isEmpty() || remark.isEmpty() ? warning + remark : warning + '\n' + remark;
}

// Also what makes input methods available there. Hidden rows can neither be found nor selected.
Qt::ItemFlags EditGridModel::flags(const QModelIndex& index) const {
  if (!index.isValid() || grid_.IsRowHidden(RowOf(index))) return {};
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return grid_.ReadOnly(index.column()) ? flags : flags | Qt::ItemIsEditable;
}

QVariant EditGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical) return RowHead(section, role);
  if (section < 0 || section >= grid_.Cols()) return {};
  if (role == Qt::DisplayRole) return ToQString(grid_.Text(0, section));
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

QVariant EditGridModel::RowHead(int section, int role) const {
  if (section < 0 || section >= rows_) return {};
  const QString remark = ToQString(rowRemark_(section + 1));
  switch (role) {
    case Qt::DisplayRole:
      return remark.isEmpty() ? QString() : QString("*");
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
    case Qt::AccessibleDescriptionRole:
      return remark;
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignCenter);
    default:
      return {};
  }
}

}  // namespace quenmar

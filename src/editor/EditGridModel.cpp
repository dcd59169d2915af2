#include "editor/EditGridModel.h"

#include "widgets/QtText.h"
#include "widgets/ValueEdit.h"

namespace quenmar {

EditGridModel::EditGridModel(const xEditGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid), rows_(DataRows()), cols_(grid.Cols()) {}

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
  // Whoever hears of an edit may change other cells, too; the views paint only what they show.
  if (rows_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, cols_ - 1));
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
  const StringView text = grid_.Text(RowOf(index), index.column());
  if (role == Qt::DisplayRole) return ToQString(text);
  const bool warns = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
  if (!warns || grid_.ReadOnly(index.column())) return {};
  return ReadBackWarning(text, warning_);
}

// Also what makes input methods available there.
Qt::ItemFlags EditGridModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.isValid() && !grid_.ReadOnly(index.column()) ? flags | Qt::ItemIsEditable : flags;
}

QVariant EditGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= grid_.Cols()) return {};
  if (role == Qt::DisplayRole) return ToQString(grid_.Text(0, section));
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

}  // namespace quenmar

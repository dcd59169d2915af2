/// The edit grid on the screen: a table with a text editor or a drop-down list over one cell.
#pragma once

#include <QTableView>
#include <vector>

#include "editor/EditGridModel.h"
#include "grid/xEditGrid.h"

class QComboBox;

namespace quenmar {

class ColumnWidths;
class ValueEdit;

/// Shows an `xEditGrid` and reports to it what the user does; all decisions are the grid's. The
/// editors are children of the table: "T", the text editor, and "C", the drop-down list.
class EditGridView : public QTableView {
  Q_OBJECT

 public:
  /// @param events outlives the view
  EditGridView(xEditGridEvents& events, QWidget* parent);

  /// Changes that are made through this reference show after `Reload`.
  [[nodiscard]] xEditGrid& Grid() { return grid_; }
  [[nodiscard]] const xEditGrid& Grid() const { return grid_; }
  void Reload();

  /// Shows changed texts and marks of the same rows. An open editor is closed.
  void Refresh();

  /// Hides other rows than before; see `xEditGrid::SetHiddenRows`.
  void SetHiddenRows(const std::vector<bool>& hidden);

  /// @return the visible rows with something selected, the current one at least; in their order, by
  /// the grid's own count.
  [[nodiscard]] std::vector<int> SelectedRows() const;

  [[nodiscard]] ValueEdit* TextEditor() const { return text_; }

  /// Marks values, in the editor and in the cells, that will change when the saved file is read.
  /// @param warning as in `ReadBackWarning`
  void SetWarning(const String& warning);

  /// Marks cells and the heads of rows from now on.
  void SetMarks(CellMarksOf cells, RowRemarkOf rows);

  /// Remembers the widths of the columns from now on, under the names of window and grid.
  void RememberColumns(const QString& window);

  /// @return the height of the header and so many rows.
  [[nodiscard]] int HeightOf(int rows) const;

  /// @return the width that shows all columns and a scroll bar.
  [[nodiscard]] int FullWidth() const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
      const QModelIndex& index, const QEvent* event = nullptr) const override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateEditorGeometries() override;

  /// Shows the warning of a cell, or the whole text of one that has room for a part of it.
  bool viewportEvent(QEvent* event) override;

 private:
  void SetUpTable();
  void CreateEditors();
  /// Gives a new header its columns.
  void BeginColumns();
  void HideRows();

  /// Takes over the grid's current cell, rows, texts and editors after an action.
  void Follow();
  void ShowTextEditor(bool started);
  void ShowList(bool started);
  void HideEditors();
  /// @return what the editors are called when read out: the row's first cell and the column's
  /// title.
  [[nodiscard]] QString SpokenCell() const;
  void LayEditors();

  /// Begins an edit in which the text that the event types replaces the cell's.
  void TypeOver(QEvent* event);
  void ChangeText(const QString& text);
  [[nodiscard]] bool PressKeyInEditor(const QKeyEvent& event);
  void LeaveEditor(const QObject* editor);

  xEditGrid grid_;
  EditGridModel* model_;
  ColumnWidths* widths_;
  String header_;  // whose columns are shown
  ValueEdit* text_ = nullptr;
  QComboBox* list_ = nullptr;
  bool following_ = false;  // changes come from the grid, not from the user
};

}  // namespace quenmar

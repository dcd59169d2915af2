/// The editable grid without its presentation: cells, column settings, cell edit and events.
///
/// A presentation paints `Text`, puts an editor over the current cell as `State` says, and calls
/// the operations under "The user's actions"; after each of them it shows the editors' new state.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "docmodel/Document.h"
#include "grid/CellMatrix.h"
#include "grid/ColumnSettings.h"
#include "grid/xEditGridEvents.h"
#include "text/RuntimeError.h"
#include "text/String.h"

namespace quenmar {

/// A grid of texts with one fixed header row (row 0) and no fixed columns. Rows and columns count
/// from 0. Indexes outside the matrix and counts below 1 raise `RuntimeError` 9. A column may have
/// settings before the matrix reaches it.
class xEditGrid {
 public:
  static constexpr int kOverflow = 6;
  static constexpr int kSubscriptOutOfRange = 9;

  static constexpr int kKeyUp = 38;
  static constexpr int kKeyDown = 40;
  static constexpr char16_t kEnter = 13;

  /// Which editor is visible over the current cell.
  enum class EditState { kIdle, kText, kList };

  /// A column's part of the header.
  struct Header {
    String caption;  ///< without its trailing blanks
    int width = 0;  ///< in characters, trailing blanks included; 0 where `FormatString` has no part
  };

  /// The persisted properties: keys and values in the order in which they are written.
  using Properties = std::vector<std::pair<String, String>>;

  /// @param events outlives the grid.
  explicit xEditGrid(xEditGridEvents& events);

  // Size, header and current cell.

  [[nodiscard]] int Cols() const { return cells_.Cols(); }
  [[nodiscard]] int Rows() const { return cells_.Rows(); }
  /// Change the size. Cells inside the new size keep their texts; if the current cell is outside,
  /// the nearest one becomes current.
  void SetCols(int cols);
  void SetRows(int rows);

  /// @return the current cell: a data row, or 0 while there is only the header.
  [[nodiscard]] int Row() const { return row_; }
  [[nodiscard]] int Col() const { return col_; }

  /// Column captions separated by "|"; a caption with its trailing blanks gives the column's width.
  [[nodiscard]] const String& FormatString() const { return formatString_; }
  void SetFormatString(StringView format);
  [[nodiscard]] std::vector<Header> Headers() const;

  /// 1 lets rows grow by one whenever the last row is edited or a key is pressed in it.
  [[nodiscard]] int AutoCrecimiento() const { return autoCrecimiento_; }
  void SetAutoCrecimiento(int growth);

  // Hidden rows. They keep their cells; no edit begins in them, and moving skips them.

  [[nodiscard]] bool IsRowHidden(int row) const {
    return row >= 0 && static_cast<size_t>(row) < hidden_.size() &&
           hidden_[static_cast<size_t>(row)];
  }
  /// Hides these rows and shows all others. When the current row gets hidden, the next visible one
  /// below becomes current, else the next one above.
  /// @param hidden by row, the header row included, which always shows; rows beyond it are visible
  /// @return whether other rows are hidden than before.
  bool SetHiddenRows(std::vector<bool> hidden);

  // Settings of the columns.

  /// @return "1" for a list column, "0" for a text column.
  [[nodiscard]] String ColType(int col) const;
  void SetColType(int col, StringView type);
  [[nodiscard]] bool ReadOnly(int col) const { return settings_.ReadOnly(col); }
  void SetReadOnly(int col, bool readOnly) { settings_.SetReadOnly(col, readOnly); }

  /// Appends an entry to the column's drop-down list.
  /// @param label what the user sees and the cell contains; `DocError` 32 or 33 when it contains a
  ///   blank, "<", ">" or a double quote, which leaves the list as it was
  /// @param value what `CellValue` returns
  void AddListContent(int col, StringView label, StringView value);
  void RemoveListContent(int col, StringView label) { settings_.RemoveEntry(col, label); }
  /// Forgets all settings of the column, which becomes a text column that can be edited.
  void ClearList(int col) { settings_.Remove(col); }

  /// @return the label of a list column. When it has none, and for a text column, the text of the
  /// cell in row `col` and column `row`.
  [[nodiscard]] String Etiqueta(int col, int row) const;
  /// Sets the label of a column; empty for none.
  void SetEtiqueta(int col, StringView label) { settings_.SetEtiqueta(col, label); }

  // Contents.

  /// @return what the cell shows; valid until the grid changes.
  [[nodiscard]] StringView Text(int row, int col) const;

  /// @return the cell's text; in a list column the value of the entry with that label, empty when
  /// there is none.
  [[nodiscard]] String CellValue(int row, int col) const;

  /// Stores a value without any event. When column number `row` (not `col`) is a list column, the
  /// cell takes the label of the entry of column `col` that has this value; where there is none,
  /// and in all other rows, it takes the value itself, so that nothing is lost.
  void SetCellValue(int row, int col, StringView value);

  /// Empties all cells below the header, which is written again, hides the editors and shows all
  /// rows.
  void Clear();

  /// @return a tree with a child "Fila_" and the index for each column, which has a field "Columna"
  /// for each data row; the cells as `CellValue` reads them.
  [[nodiscard]] std::shared_ptr<Document> XMLData() const;

  // Persistence.

  /// Takes over the properties; a missing one gets its default.
  void ReadProperties(const Properties& properties);
  /// @return all properties; from then on none counts as changed.
  [[nodiscard]] Properties WriteProperties();
  /// @return whether a persisted property was set since the last reading or writing.
  [[nodiscard]] bool PropertiesChanged() const { return propertiesChanged_; }

  // The editors.

  /// @return whether a character typed in the grid can begin an edit: no editor is visible yet, and
  /// the current cell's would be the text editor.
  [[nodiscard]] bool TakesText() const;
  [[nodiscard]] EditState State() const { return state_; }
  /// @return the text editor's text; empty unless it is visible.
  [[nodiscard]] const String& EditorText() const { return editorText_; }
  /// @return the labels in the drop-down list; empty unless it is visible.
  [[nodiscard]] const std::vector<String>& Entries() const { return entries_; }
  /// @return the index of the selected entry, -1 for none.
  [[nodiscard]] int SelectedEntry() const { return selectedEntry_; }

  /// Hides the editor. What was typed or chosen in it is in the cell already.
  void CloseEditor();

  // The user's actions. Each raises its events before it returns.

  /// Makes another cell the current one, the nearest data cell when there is no such cell. An
  /// editor never leaves its cell: it is hidden.
  void MoveTo(int row, int col);
  /// A click on a cell makes it current and starts an edit. Clicks elsewhere do nothing.
  void ClickCell(int row, int col);
  /// Starts an edit of the current cell. Raises `RuntimeError` 6 when the rows cannot grow further.
  void StartEdit();
  /// The text editor has another text. Does nothing while it is hidden.
  void ChangeEditorText(StringView text);
  /// An entry was chosen from the drop-down list. Does nothing when there is no such entry.
  void ChooseEntry(int entry);
  /// A key went down in the text editor.
  void EditorKeyDown(int keyCode);
  /// A character was typed in one of the editors; Enter gives the focus back to the grid.
  void EditorKeyPress(char16_t character);
  /// A character was typed in the grid. Raises `RuntimeError` 6 when the rows cannot grow further.
  void GridKeyPress(char16_t character);
  /// @param editor the one that lost the focus; nothing happens when it is hidden already.
  void EditorLostFocus(EditState editor);
  void Scrolled();

 private:
  void CheckCell(int row, int col) const;
  [[nodiscard]] bool IsList(int col) const { return settings_.Type(col) == u"1"; }
  void FillHeader(int firstCol);
  /// @return the nearest visible row in that direction, `row` not included; 0 when there is none.
  [[nodiscard]] int VisibleRow(int row, int step) const;
  void GrowAtLastRow();
  void ShowCellInEditor();
  [[nodiscard]] bool Commit(const String& value);

  xEditGridEvents& events_;
  CellMatrix cells_;
  ColumnSettings settings_;
  String formatString_;
  std::vector<bool> hidden_;  // by row; rows behind its end are visible
  int row_ = 1;
  int col_ = 0;
  int autoCrecimiento_ = 0;
  bool propertiesChanged_ = false;

  EditState state_ = EditState::kIdle;
  String editorText_;
  std::vector<String> entries_;
  int selectedEntry_ = -1;
};

}  // namespace quenmar

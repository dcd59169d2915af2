#pragma once

#include "editor/EditGridModel.h"
#include "grid/EditorLayout.h"
#include "grid/xEditGridEvents.h"
#include "widgets/FileWindow.h"

class QAbstractItemView;
class QAbstractScrollArea;
class QAction;
class QGroupBox;
class QPlainTextEdit;
class QPushButton;

namespace quenmar {

class DragBar;
class EditGridView;
class FindBar;
class SeriesTabs;

/// The window in which the user edits one configuration file: its settings in a grid beside the
/// distribution's, the comment of the current one, and its repeatable settings as check lists.
/// Edits go straight into the merge; Apply writes the file.
class NEditForm : public FileWindow, private xEditGridEvents {
  Q_OBJECT

 public:
  NEditForm(FileContext context, QWidget* parent);
  NEditForm(const NEditForm&) = delete;
  NEditForm& operator=(const NEditForm&) = delete;
  ~NEditForm() override;

  /// Fills the grid: one row for each setting of the server.
  void LoadGrid();

  /// Fills the series tabs.
  void LoadSeries();

  /// @return 1 when something is unsaved, else 0.
  [[nodiscard]] std::int16_t Changed() const override;

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  // The grid's events.
  void Click() override;
  void RowColChange() override;
  void SureChange(bool& cancel, String& newValue, int& row, int& col) override;
  void Change(int& row, int& col) override;

  void CreateControls();
  void SetUpGrid();
  void SetCaptions();
  void AddClipboardActions();
  void AddSettingActions();
  void Connect();
  void SetUpSize();
  void LayOut();
  void LayDragBar();
  /// Makes the comments box higher or lower than it was when the dragging began.
  void DragComments(int pixels);
  /// Sets the window's minimum height, limited to the screen's.
  void WantHeight(int height);

  void ShowMerge() override;
  void ShowValues();

  /// Whether rows that are shown and no longer pass the filter stay until it changes.
  enum class Shown { kStay, kGo };

  void Filter(Shown before);

  // What is done to the selected rows.
  void SetToOriginal();
  void Switch();

  void EditSeries(int group, int item, bool checked);
  void ShowSeriesComment(int group, int item);
  void Copy();
  void Paste();

  /// @return the setting of a row: rows are in the order of the fields, of which several may have
  /// one name.
  [[nodiscard]] Fields::Pointer SettingOf(int row) const;
  void ShowSettingComment();
  void ShowCommentOf(const QAbstractItemView* view);
  [[nodiscard]] CellMarks MarksOf(int row, int col) const;
  [[nodiscard]] CellMarks OriginalMarksOf(StringView name) const;
  void ShowContextMenu(QAbstractScrollArea* box, QPoint place);
  /// @return the height of a comments box with that number of lines, in twips.
  [[nodiscard]] int CommentsHeight(int lines) const;
  /// @return the minimum height of the series, in twips: the tabs and about one entry.
  [[nodiscard]] int TabsHeight() const;
  [[nodiscard]] EditorLayout LayoutFor(int height) const;

  LayoutMode mode_ = LayoutMode::kSettings;
  int commentsHeight_ = 0;  // in twips, as chosen by the user; 0 until then
  int draggedHeight_ = 0;   // in pixels, when the dragging began

  QGroupBox* frame_ = nullptr;
  EditGridView* xEDG_ = nullptr;
  FindBar* find_ = nullptr;
  DragBar* dragBar_ = nullptr;
  QAction* setToOriginal_ = nullptr;
  QAction* switch_ = nullptr;
  QAction* copy_ = nullptr;
  QAction* paste_ = nullptr;
  QPlainTextEdit* comments_ = nullptr;
  SeriesTabs* series_ = nullptr;
  QPushButton* apply_ = nullptr;
  QPushButton* close_ = nullptr;
};

}  // namespace quenmar

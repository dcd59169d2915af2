#pragma once

#include <QListWidget>
#include <map>
#include <optional>
#include <vector>

#include "text/String.h"

class QHeaderView;

namespace quenmar {

class SettingDelegate;

/// One setting of a list.
struct SettingRow {
  String name;
  String value;
  String originalValue;  ///< the distribution's
  String remark;         ///< what else is to be said
  String mark;           ///< a sign before the distribution's value; empty for none
  String shortRemark;    ///< the part of the remark that is shown in the row
  String need;           ///< is read out, where the tick does not mean it; else empty
  bool ticked = false;
  bool changed = false;  ///< the two values differ
  bool commentedOut = false;
  bool staysCommentedOut = false;  ///< when it is saved
  bool shown = true;               ///< else a filter hides it
};

/// A list of settings with check boxes, one of them current as long as any is shown; their names
/// are the items' texts. Its signals report what the user does, never what the program does.
class ParameterList : public QListWidget {
  Q_OBJECT

 public:
  explicit ParameterList(QWidget* parent = nullptr);

  /// Shows both values, below these headers: of the names and of the two values.
  void ShowBothValues(const QStringList& headers);

  /// Replaces the rows; a list without any is disabled. The current setting stays current. When it
  /// is gone, the next one that is left becomes current, else the last one; the first time, the
  /// first one. The scroll position stays.
  void Fill(const std::vector<SettingRow>& rows);

  /// Updates some rows by their indexes, except for their ticks.
  void Refresh(const std::map<int, SettingRow>& rows);

  /// Ticks every item that is shown.
  void TickAll();

  void SetTicked(QListWidgetItem* item, bool ticked);

  /// @return the current item's name, if there is one.
  [[nodiscard]] std::optional<String> CurrentName() const;

  /// @return the names of the highlighted items in list order, at least the current one's.
  [[nodiscard]] std::vector<String> HighlightedNames() const;

  /// @return the names of the ticked items, in list order.
  [[nodiscard]] std::vector<String> TickedNames() const;

  /// @return the names of the ticked items that are shown, or of those that a filter hides, which
  /// must not move unseen.
  [[nodiscard]] std::vector<String> TickedNames(bool shown) const;

  /// @return how many items are shown.
  [[nodiscard]] int ShownCount() const;

 signals:
  /// An item became current, or the user turned to this list again.
  void Chosen();

  /// The user ticked or unticked an item.
  void ItemTicked(QListWidgetItem* item);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

  /// In a list of single selection the current item stays the highlighted one, also for clicks with
  /// Ctrl or Shift.
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  void SetData(QListWidgetItem* item, const SettingRow& row) const;

  /// @return the row of the item that takes the place of the current one; -1 for none.
  [[nodiscard]] int RowAmong(const std::vector<SettingRow>& rows) const;
  void LayColumns();

  SettingDelegate* delegate_;
  QHeaderView* header_ = nullptr;
};

}  // namespace quenmar

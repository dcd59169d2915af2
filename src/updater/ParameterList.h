#pragma once

#include <QListWidget>
#include <optional>
#include <vector>

#include "conf/Functions.h"
#include "text/String.h"

namespace quenmar {

/// A list of settings by name with check boxes, one of them current as long as there is any. Its
/// signals tell what the user does, never what the program does.
class ParameterList : public QListWidget {
  Q_OBJECT

 public:
  explicit ParameterList(QWidget* parent = nullptr);

  /// Lists other items; a list without any is disabled. The current item stays current. When it is
  /// gone, the next one of those behind it that are left takes its place, else the last; the first
  /// time that is the first.
  void Fill(const CheckList& items);

  /// Ticks every item.
  void TickAll();

  void SetTicked(QListWidgetItem* item, bool ticked);

  /// @return the current item's name, if there is one.
  [[nodiscard]] std::optional<String> CurrentName() const;

  /// @return the names of the ticked items, in list order.
  [[nodiscard]] std::vector<String> TickedNames() const;

 signals:
  /// An item became current, or the user turned to this list again.
  void Chosen();

  /// The user ticked or unticked an item.
  void ItemTicked(QListWidgetItem* item);

 protected:
  void focusInEvent(QFocusEvent* event) override;

  /// One item stays highlighted, whatever is clicked with whatever key held down: the current one.
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  /// @return the row of the item that takes the place of the current one.
  [[nodiscard]] int RowAmong(const CheckList& items) const;
};

}  // namespace quenmar

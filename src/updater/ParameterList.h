#pragma once

#include <QListWidget>
#include <functional>
#include <optional>
#include <vector>

#include "docmodel/Document.h"
#include "text/String.h"

namespace quenmar {

/// A list of settings by name with check boxes, one of them current as long as there is any. Its
/// signals tell what the user does, never what the program does.
class ParameterList : public QListWidget {
  Q_OBJECT

 public:
  explicit ParameterList(QWidget* parent = nullptr);

  /// Lists the fields of `source` in their order and makes the first one current; a list without
  /// items is disabled.
  /// @param ticked whether the item of that name starts with a tick
  void Fill(const Document& source, const std::function<bool(StringView)>& ticked);

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
};

}  // namespace quenmar

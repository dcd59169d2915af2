#pragma once

#include <QList>
#include <QObject>

class QTableView;

namespace quenmar {

/// The widths of a table's columns. The user drags them, and they are remembered in the toolkit's
/// state file. The last column also takes the room that the others leave.
class ColumnWidths : public QObject {
 public:
  /// @param table owns the new object
  explicit ColumnWidths(QTableView* table);

  /// Begins with the remembered widths, or with others where there are none for as many columns.
  void Begin(const QList<int>& widths);

  /// Remembers the widths from now on, under the table's object name in the state file.
  void Remember(const QString& window);

  [[nodiscard]] int Count() const { return static_cast<int>(wanted_.size()); }

  /// @return the width that shows all columns.
  [[nodiscard]] int Total() const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Take(int column, int width);
  void Apply();

  QTableView* table_;
  QString key_;
  QList<int> first_;
  QList<int> wanted_;
  bool applying_ = false;
  bool chosen_ = false;  // the user has chosen widths
};

}  // namespace quenmar

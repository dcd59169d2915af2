#pragma once

#include <QHeaderView>
#include <QObject>

namespace quenmar {

/// Remembers the widths and the order of a table's columns, and by which one its rows are sorted:
/// restores them at once, and stores them whenever the table is hidden.
class ColumnState : public QObject {
 public:
  /// @param header has all its columns; owns the new object
  /// @param key the table's name in the state file. The number of columns is appended to it, so
  /// that a program with other columns restores nothing
  ColumnState(QHeaderView* header, const QString& key);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString key_;
};

}  // namespace quenmar

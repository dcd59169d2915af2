#include "widgets/ColumnWidths.h"

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>
#include <algorithm>
#include <numeric>

#include "widgets/StateFile.h"

namespace quenmar {

ColumnWidths::ColumnWidths(QTableView* table) : QObject(table), table_(table) {
  table->installEventFilter(this);
  table->viewport()->installEventFilter(this);
  connect(table->horizontalHeader(), &QHeaderView::sectionResized, this,
          [this](int column, int /*before*/, int width) { Take(column, width); });
}

void ColumnWidths::Begin(const QList<int>& widths) {
  first_ = widths;
  wanted_ = widths;
  if (!key_.isEmpty()) {
    const QVariantList stored = StateFile().value(key_).toList();
    if (stored.size() == widths.size()) {
      std::transform(stored.begin(), stored.end(), wanted_.begin(),
                     [](const QVariant& width) { return width.toInt(); });
    }
  }
  Apply();
}

void ColumnWidths::Remember(const QString& window) {
  key_ = window + '/' + table_->objectName();
  Begin(first_);
}

int ColumnWidths::Total() const { return std::accumulate(wanted_.begin(), wanted_.end(), 0); }

void ColumnWidths::Take(int column, int width) {
  if (applying_ || column >= wanted_.size()) return;
  wanted_[column] = width;
  chosen_ = true;
  Apply();
}

void ColumnWidths::Apply() {
  const QScopedValueRollback applying(applying_, true);
  const int columns =
      std::min(static_cast<int>(wanted_.size()), table_->horizontalHeader()->count());
  int left = table_->viewport()->width();
  for (int column = 0; column < columns; ++column) {
    const bool last = column == columns - 1;
    table_->setColumnWidth(column, last ? std::max(left, wanted_[column]) : wanted_[column]);
    left -= table_->columnWidth(column);
  }
}

bool ColumnWidths::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && watched == table_->viewport()) {
    Apply();
  } else if (event->type() == QEvent::Hide && watched == table_ && chosen_ && !key_.isEmpty()) {
    StateFile().setValue(key_, QVariantList(wanted_.begin(), wanted_.end()));
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace quenmar

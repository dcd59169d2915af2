#include "widgets/ColumnState.h"

#include <QEvent>
#include "widgets/StateFile.h"

namespace quenmar {

ColumnState::ColumnState(QHeaderView* header, const QString& key)
    : QObject(header), key_(key + QString::number(header->count())) {
  header->restoreState(StateFile().value(key_).toByteArray());
  header->installEventFilter(this);
}

bool ColumnState::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide) {
    StateFile().setValue(key_, static_cast<QHeaderView*>(watched)->saveState());
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace quenmar

#include "widgets/ColumnState.h"

#include <QEvent>
#include <utility>

#include "widgets/StateFile.h"

namespace quenmar {

ColumnState::ColumnState(QHeaderView* header, QString key) : QObject(header), key_(std::move(key)) {
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

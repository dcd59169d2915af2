#pragma once

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QTest>
#include <QTimer>

namespace quenmar {

/// Presses keys, such as "Ctrl+R Down x", each in what has the focus of the window by then.
inline void PressKeys(const QWidget& window, const QString& keys) {
  for (const QString& key : keys.split(' ')) {
    QTest::keySequence(window.focusWidget(), QKeySequence(key));
  }
}

/// Asks a control for its menu and chooses an entry, if any. @return the names of all entries.
inline QStringList MenuOf(QWidget* control, const QString& chosen = {},
                          QContextMenuEvent::Reason reason = QContextMenuEvent::Keyboard) {
  QStringList offered;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &poll, [&offered, &chosen] {
    QWidget* const menu = QApplication::activePopupWidget();
    if (menu == nullptr) return;
    for (QAction* const action : menu->actions()) {
      offered << action->objectName();
      if (!chosen.isEmpty() && action->objectName() == chosen) action->trigger();
    }
    menu->close();
  });
  poll.start(0);
  QContextMenuEvent event(reason, QPoint(2, 2), QPoint(2, 2));
  QApplication::sendEvent(control, &event);
  return offered;
}

}  // namespace quenmar

#pragma once

#include <QAction>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>

namespace quenmar {

/// Presses keys, such as "Ctrl+R Down x", each in what has the focus of the window by then.
inline void PressKeys(const QWidget& window, const QString& keys) {
  for (const QString& key : keys.split(' ')) {
    QTest::keySequence(window.focusWidget(), QKeySequence(key));
  }
}

/// Chooses an entry, if any, of the menu that an action opens. @return the names of all entries.
inline QStringList MenuOf(const std::function<void()>& open, const QString& chosen = {}) {
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
  open();
  return offered;
}

}  // namespace quenmar

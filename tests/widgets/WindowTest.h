// What tests of windows share.
#pragma once

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <utility>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "widgets/QtText.h"

namespace quenmar {

/// Scripted messages for tests of windows, which compare lists of texts.
class GuiMessages : public ScriptedMessages {
 public:
  Button ShowWithDetails(const String& text, int style, const String& details,
                         const String& offer) override {
    const QCursor* const cursor = QGuiApplication::overrideCursor();
    busy_ = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    return ScriptedMessages::ShowWithDetails(text, style, details, offer);
  }

  /// @return whether the application was busy when it showed the last message box.
  [[nodiscard]] bool Busy() const { return busy_; }

  /// @return what was shown since the last call, each as "[style] text".
  QStringList Take() {
    QStringList taken;
    for (const auto& [text, style] : std::exchange(shown, {})) {
      taken << QString("[%1] ").arg(style) + QString::fromStdString(text);
    }
    return taken;
  }

 private:
  bool busy_ = false;
};

/// Lets the windows of one test program remember their geometry in a folder of its own.
class PrivateState {
 public:
  PrivateState() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       ToQString(PathText(folder_.Folder())));
  }

 private:
  ScratchFolder folder_;
};

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

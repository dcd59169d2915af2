#include "widgets/WindowGeometry.h"

#include <QEvent>
#include <utility>

#include "widgets/ScreenFit.h"
#include "widgets/StateFile.h"

namespace quenmar {

WindowGeometry::WindowGeometry(QWidget* window, QString key)
    : QObject(window), key_(std::move(key)) {
  window->restoreGeometry(StateFile().value(key_).toByteArray());
  FitToScreen(window);
  window->installEventFilter(this);
}

bool WindowGeometry::eventFilter(QObject* watched, QEvent* event) {
  auto* const window = static_cast<QWidget*>(watched);
  if (event->type() == QEvent::WindowActivate && !frameKnown_) {
    frameKnown_ = true;
    FitToScreen(window);
  } else if (event->type() == QEvent::Hide) {
    frameKnown_ = false;
    StateFile().setValue(key_, window->saveGeometry());
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace quenmar

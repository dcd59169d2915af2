#include "widgets/WindowGeometry.h"

#include <QEvent>
#include <utility>

namespace quenmar {

namespace {

QSettings StateFile() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "quenmar", "windows");
}

}  // namespace

WindowGeometry::WindowGeometry(QWidget* window, QString key)
    : QObject(window), key_(std::move(key)) {
  window->restoreGeometry(StateFile().value(key_).toByteArray());
  window->installEventFilter(this);
}

bool WindowGeometry::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide) {
    StateFile().setValue(key_, static_cast<QWidget*>(watched)->saveGeometry());
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace quenmar

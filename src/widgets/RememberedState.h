#pragma once

#include <QEvent>
#include <QObject>
#include <utility>

#include "widgets/StateFile.h"

namespace quenmar {

/// Remembers what a header or splitter has as its state (widths, order, by which column rows are
/// sorted; places of the borders): restores it at once, and stores it whenever the widget is
/// hidden.
template <class Widget>
class RememberedState : public QObject {
 public:
  /// @param widget has all its parts; owns the new object
  /// @param key the widget's name in the state file. A widget with other parts needs another one.
  RememberedState(Widget* widget, QString key) : QObject(widget), key_(std::move(key)) {
    widget->restoreState(StateFile().value(key_).toByteArray());
    widget->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Hide) {
      StateFile().setValue(key_, static_cast<Widget*>(watched)->saveState());
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QString key_;
};

}  // namespace quenmar

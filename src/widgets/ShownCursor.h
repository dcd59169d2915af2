#pragma once

#include <QGuiApplication>

namespace quenmar {

/// A cursor over all windows of the application, for as long as the object lives.
class ShownCursor {
 public:
  explicit ShownCursor(Qt::CursorShape shape) { QGuiApplication::setOverrideCursor(shape); }
  ShownCursor(const ShownCursor&) = delete;
  ShownCursor& operator=(const ShownCursor&) = delete;
  ~ShownCursor() { QGuiApplication::restoreOverrideCursor(); }
};

}  // namespace quenmar

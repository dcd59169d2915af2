#pragma once

#include <QObject>
#include <QWidget>

namespace quenmar {

/// Remembers size and place of a window in the user's own state file of the toolkit, apart from the
/// options: restores them at once, and stores them whenever the window is hidden. Keeps the window
/// on the screen, which may be another than last time.
class WindowGeometry : public QObject {
 public:
  /// @param window owns the new object
  /// @param key the window's name in the state file
  WindowGeometry(QWidget* window, QString key);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString key_;
  bool frameKnown_ = false;
};

}  // namespace quenmar

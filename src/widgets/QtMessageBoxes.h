#pragma once

#include <QString>
#include <utility>

#include "conf/MessageBoxes.h"

class QWidget;

namespace quenmar {

/// Message boxes on the screen, modal to the active window, under the normal cursor also while the
/// application shows the busy one. Escape never gives the answer that changes something.
class QtMessageBoxes : public MessageBoxes {
 public:
  /// @param title of all message boxes: the application's
  explicit QtMessageBoxes(QString title) : title_(std::move(title)) {}

  Button Show(const String& text, int style) override;
  Button ShowWithDetails(const String& text, int style, const String& details) override;

 private:
  QString title_;
};

}  // namespace quenmar

#pragma once

#include <QString>
#include <utility>

#include "conf/MessageBoxes.h"

namespace quenmar {

/// Message boxes on the screen, over the window that the user works in, under the normal cursor
/// also while the application shows the busy one. Escape and the frame's own button never give Yes
/// or No.
class QtMessageBoxes : public MessageBoxes {
 public:
  /// @param title of all message boxes: the application's
  explicit QtMessageBoxes(QString title) : title_(std::move(title)) {}

  Button Show(const String& text, int style) override;
  Button ShowWithDetails(const String& text, int style, const String& details,
                         const String& offer) override;

 private:
  QString title_;
};

}  // namespace quenmar

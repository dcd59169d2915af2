#pragma once

#include "conf/MessageBoxes.h"

class QWidget;

namespace quenmar {

/// Message boxes on the screen, modal to the active window. They carry the application's title;
/// Escape never gives the answer that changes something.
class QtMessageBoxes : public MessageBoxes {
 public:
  Button Show(const String& text, int style) override;
};

}  // namespace quenmar

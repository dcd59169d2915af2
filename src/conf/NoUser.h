#pragma once

#include "conf/MessageBoxes.h"

namespace quenmar {

/// Stands in for the user where there is none: every question is answered with Yes, and nothing is
/// shown.
class NoUser final : public MessageBoxes {
 public:
  Button Show(const String& /*text*/, int style) override {
    const bool question = (style & message_style::kButtons) != message_style::kOk;
    return question ? Button::kYes : Button::kOk;
  }
};

}  // namespace quenmar

#pragma once

#include "conf/MessageBoxes.h"

namespace quenmar {

/// Answers every question with Yes, without a user, and shows nothing.
class NoUser final : public MessageBoxes {
 public:
  Button Show(const String& /*text*/, int style) override {
    const bool question = (style & message_style::kButtons) != message_style::kOk;
    return question ? Button::kYes : Button::kOk;
  }
};

}  // namespace quenmar

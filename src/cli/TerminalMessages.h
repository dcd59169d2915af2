#pragma once

#include "cli/Console.h"
#include "conf/MessageBoxes.h"

namespace quenmar {

/// Who answers the questions.
enum class Answers { kAsk, kYes, kNo };

/// Message boxes as lines on standard error. Questions are answered at the terminal, or all alike.
class TerminalMessages : public MessageBoxes {
 public:
  /// `streams` outlives the object.
  TerminalMessages(const ConsoleStreams& streams, Answers answers)
      : streams_(streams), answers_(answers) {}

  Button Show(const String& text, int style) override;

 private:
  [[nodiscard]] Button Ask(bool cancelable) const;

  const ConsoleStreams& streams_;
  Answers answers_;
};

}  // namespace quenmar

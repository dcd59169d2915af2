#pragma once

#include "cli/Console.h"
#include "conf/MessageBoxes.h"
#include "files/Files.h"

namespace quenmar {

/// Who answers the questions.
enum class Answers { kAsk, kYes, kNo };

/// Message boxes as lines on standard error, each beginning with the file that it is about, unless
/// the text names it anyway. Questions are answered at the terminal, or all alike.
class TerminalMessages : public MessageBoxes {
 public:
  /// `streams` outlives the object.
  TerminalMessages(const ConsoleStreams& streams, Answers answers)
      : streams_(streams), answers_(answers) {}

  /// Sets the file that the next messages are about.
  void SetSubject(const Path& file) { subject_ = PathText(file); }

  /// @return whether every question is answered with Yes.
  [[nodiscard]] bool AnswersYes() const { return answers_ == Answers::kYes; }

  Button Show(const String& text, int style) override;

 private:
  [[nodiscard]] Button Ask(bool cancelable) const;

  const ConsoleStreams& streams_;
  Answers answers_;
  String subject_;
};

}  // namespace quenmar

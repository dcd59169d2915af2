#include "cli/TerminalMessages.h"

#include <istream>
#include <ostream>
#include <string>

#include "cli/Printable.h"

namespace quenmar {

Button TerminalMessages::Show(const String& text, int style) {
  std::ostream& err = streams_.err;
  if (!Contains(text, subject_)) err << Printable(subject_) << ": ";
  err << PrintableLines(text);
  const int buttons = style & message_style::kButtons;
  if (buttons == message_style::kOk) {
    err << std::endl;
    return Button::kOk;
  }
  if (answers_ == Answers::kAsk) return Ask(buttons == message_style::kYesNoCancel);
  const bool yes = answers_ == Answers::kYes;
  err << (yes ? " Yes" : " No") << std::endl;
  return yes ? Button::kYes : Button::kNo;
}

/// Asks until the answer is one that the question knows; Enter and the end of input mean No.
Button TerminalMessages::Ask(bool cancelable) const {
  const char* const prompt = cancelable ? " [y/N/c] " : " [y/N] ";
  streams_.err << prompt << std::flush;
  for (std::string answer; std::getline(streams_.in, answer);) {
    const char first = answer.empty() ? 'n' : answer.front();
    if (first == 'y' || first == 'Y') return Button::kYes;
    if (first == 'n' || first == 'N' || first == '\r') return Button::kNo;
    if (cancelable && (first == 'c' || first == 'C')) return Button::kCancel;
    streams_.err << prompt << std::flush;
  }
  streams_.err << std::endl;
  return Button::kNo;
}

}  // namespace quenmar

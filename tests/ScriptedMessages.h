#pragma once

#include <cstdlib>
#include <deque>
#include <initializer_list>
#include <iostream>
#include <string>
#include <vector>

#include "conf/MessageBoxes.h"
#include "text/Charset.h"

namespace quenmar {

/// Answers message boxes by a script and records them. Without an answer left, a question ends the
/// program.
class ScriptedMessages : public MessageBoxes {
 public:
  struct Shown {
    std::string text;  // UTF-8
    int style;
    bool operator==(const Shown&) const = default;
  };

  /// Puts answers at the end of the script.
  void Answer(std::initializer_list<Button> answers) {
    answers_.insert(answers_.end(), answers.begin(), answers.end());
  }

  Button Show(const String& text, int style) override {
    return ShowWithDetails(text, style, {}, {});
  }

  Button ShowWithDetails(const String& text, int style, const String& details,
                         const String& /*offer*/) override {
    shown.push_back({ToUtf8(text), style});
    if (!details.empty()) lastDetails = details;
    if ((style & message_style::kButtons) == message_style::kOk) return Button::kOk;
    if (answers_.empty()) {
      std::cerr << "unexpected question: " << shown.back().text << std::endl;
      std::abort();  // an exception could be taken for one of the program's own
    }
    const Button answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

  std::vector<Shown> shown;
  String lastDetails;  // of the last box that had any

 private:
  std::deque<Button> answers_;
};

inline void PrintTo(const ScriptedMessages::Shown& shown, std::ostream* out) {
  *out << '[' << shown.style << "] " << shown.text;
}

}  // namespace quenmar

#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
#include <string>
#include <vector>

#include "conf/MessageBoxes.h"
#include "text/Charset.h"

namespace quenmar {

/// Answers message boxes by a script and records them. A question beyond the script fails the test.
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
    shown.push_back({ToUtf8(text), style});
    if ((style & message_style::kButtons) == message_style::kOk) return Button::kOk;
    if (answers_.empty()) {
      ADD_FAILURE() << "unexpected question: " << shown.back().text;
      return Button::kNo;
    }
    const Button answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

  std::vector<Shown> shown;

 private:
  std::deque<Button> answers_;
};

inline void PrintTo(const ScriptedMessages::Shown& shown, std::ostream* out) {
  *out << '[' << shown.style << "] " << shown.text;
}

}  // namespace quenmar

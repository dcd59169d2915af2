#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <QString>
#include <QStringList>
#include <QtTest>
#include <deque>
#include <initializer_list>
#include <utility>

#include "conf/MessageBoxes.h"
#include "widgets/QtText.h"

namespace quenmar {

/// Answers message boxes by a script and records them. A question beyond the script fails the test.
class GuiMessages : public MessageBoxes {
 public:
  /// Puts answers at the end of the script.
  void Answer(std::initializer_list<Button> answers) {
    answers_.insert(answers_.end(), answers.begin(), answers.end());
  }

  Button Show(const String& text, int style) override {
    const QCursor* const cursor = QGuiApplication::overrideCursor();
    busy_ = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    shown_.append(QString("[%1] %2").arg(style).arg(ToQString(text)));
    if ((style & message_style::kButtons) == message_style::kOk) return Button::kOk;
    if (answers_.empty()) {
      QTest::qFail(qPrintable("unexpected question: " + shown_.last()), __FILE__, __LINE__);
      return Button::kNo;
    }
    const Button answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

  Button ShowWithDetails(const String& text, int style, const String& details) override {
    details_ = ToQString(details);
    return Show(text, style);
  }

  /// @return the details that a message box had last.
  [[nodiscard]] const QString& Details() const { return details_; }

  /// @return whether the application was busy when it showed the last message box.
  [[nodiscard]] bool Busy() const { return busy_; }

  /// @return what was shown since the last call, each as "[style] text".
  QStringList Take() { return std::exchange(shown_, {}); }

 private:
  QStringList shown_;
  QString details_;
  bool busy_ = false;
  std::deque<Button> answers_;
};

}  // namespace quenmar

#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <QStringList>
#include <utility>

#include "ScriptedMessages.h"

namespace quenmar {

/// Scripted messages for tests of windows, which compare lists of texts.
class GuiMessages : public ScriptedMessages {
 public:
  Button ShowWithDetails(const String& text, int style, const String& details,
                         const String& offer) override {
    const QCursor* const cursor = QGuiApplication::overrideCursor();
    busy_ = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    return ScriptedMessages::ShowWithDetails(text, style, details, offer);
  }

  /// @return whether the application was busy when it showed the last message box.
  [[nodiscard]] bool Busy() const { return busy_; }

  /// @return what was shown since the last call, each as "[style] text".
  QStringList Take() {
    QStringList taken;
    for (const auto& [text, style] : std::exchange(shown, {})) {
      taken << QString("[%1] ").arg(style) + QString::fromStdString(text);
    }
    return taken;
  }

 private:
  bool busy_ = false;
};

}  // namespace quenmar

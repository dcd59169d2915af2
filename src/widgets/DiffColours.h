#pragma once

#include <QObject>

class QPlainTextEdit;

namespace quenmar {

/// Colours the lines of a unified diff so that they are readable on the palette of the text:
/// removed lines red, added ones green, the heads of its parts blue.
class DiffColours : public QObject {
 public:
  /// @param text owns the new object; its content stays
  explicit DiffColours(QPlainTextEdit* text);

  /// @return whether the text is a unified diff without the names of the files.
  [[nodiscard]] static bool IsDiff(const QString& text) { return text.startsWith("@@ "); }

  /// Takes over another palette of the text.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Colour();

  QPlainTextEdit* text_;
};

}  // namespace quenmar

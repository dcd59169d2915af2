#pragma once

#include <QSyntaxHighlighter>

class QPlainTextEdit;

namespace quenmar {

/// Colours the lines of a unified diff so that they are readable on the palette of the text: those
/// that go red, those that come green, the heads of its parts blue.
class DiffColours : public QSyntaxHighlighter {
 public:
  /// @param text owns the new object
  explicit DiffColours(QPlainTextEdit* text);

  /// @return whether the text is a unified diff without the names of the files.
  [[nodiscard]] static bool IsDiff(const QString& text) { return text.startsWith("@@ "); }

  /// Takes over another palette of the text.
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void highlightBlock(const QString& line) override;

 private:
  QPlainTextEdit* text_;
};

}  // namespace quenmar

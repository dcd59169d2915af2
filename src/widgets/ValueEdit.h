#pragma once

#include <QLineEdit>

#include "text/String.h"

class QPainter;

namespace quenmar {

/// @param warning a text; "%1" in it is replaced by what will be read
/// @return the warning about a value that will change when the saved file is read; empty for other
/// values.
[[nodiscard]] QString ReadBackWarning(StringView value, StringView warning);

/// Draws the frame that marks such a value, in a red that shows on the palette's base.
void PaintWarningFrame(QPainter& painter, const QRect& place, const QPalette& palette);

/// A line for a value: of any length, and without line breaks, since one would begin another
/// setting; what is pasted gets a blank for each. Escape takes back what was typed; where nothing
/// was, it is left to the window.
class ValueEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit ValueEdit(QWidget* parent = nullptr);

  /// Marks values that will change when the saved file is read.
  /// @param warning as in `ReadBackWarning`: the tool tip and the description of a marked text
  void SetWarning(const String& warning);

  /// Shows the value with which an edit begins.
  void Begin(const QString& value);

  /// Shows the value of a setting. When it is another setting's than before, what was typed for
  /// that one cannot be undone into this one.
  void ShowValue(const QString& setting, const QString& value);

 signals:
  /// What is typed from now on is another edit than what was typed before.
  void TypingEnded();

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Mark();

  QString setting_;
  QString first_;  // what Escape brings back
  String warning_;
};

}  // namespace quenmar

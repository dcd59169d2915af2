#pragma once

#include <QLineEdit>

namespace quenmar {

/// A line for a value: of any length, and without line breaks, since one would begin another
/// setting; what is pasted gets a blank for each.
class ValueEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit ValueEdit(QWidget* parent = nullptr);

  /// Shows the value of a setting. When it is another setting's than before, what was typed for
  /// that one cannot be undone into this one.
  void ShowValue(const QString& setting, const QString& value);

 private:
  QString setting_;
};

}  // namespace quenmar

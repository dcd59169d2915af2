#include "widgets/ValueEdit.h"

#include <QValidator>
#include <limits>

namespace quenmar {

namespace {

class OneLine : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& input, int& position) const override {
    for (qsizetype pair = input.indexOf("\r\n"); pair >= 0; pair = input.indexOf("\r\n", pair)) {
      input.remove(pair, 1);
      if (position > pair) --position;
    }
    input.replace('\r', ' ').replace('\n', ' ');
    return Acceptable;
  }
};

}  // namespace

ValueEdit::ValueEdit(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(std::numeric_limits<int>::max());
  setValidator(new OneLine(this));
}

void ValueEdit::ShowValue(const QString& setting, const QString& value) {
  if (setting == setting_ && value == text()) return;
  setting_ = setting;
  setText(value);  // which forgets what could be undone
}

}  // namespace quenmar

#include "widgets/ValueEdit.h"

#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QValidator>
#include <limits>

#include "conf/ConfLine.h"
#include "conf/Functions.h"
#include "widgets/Colours.h"
#include "widgets/QtText.h"

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

QString ReadBackWarning(StringView value, StringView warning) {
  const String readBack = ReadBackValue(value);
  if (readBack == Trim(value)) return {};
  return ToQString(FinishedText(warning, {readBack}));
}

void PaintWarningFrame(QPainter& painter, const QRect& place, const QPalette& palette) {
  constexpr int kWidth = 2;  // logical pixels
  constexpr int kRed = 0;
  QPen pen(ReadableOn(palette.base().color(), kRed), kWidth);
  pen.setJoinStyle(Qt::MiterJoin);
  painter.setPen(pen);
  painter.drawRect(place.adjusted(kWidth / 2, kWidth / 2, -kWidth / 2, -kWidth / 2));
}

ValueEdit::ValueEdit(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(std::numeric_limits<int>::max());
  setValidator(new OneLine(this));
  connect(this, &QLineEdit::textChanged, this, &ValueEdit::Mark);
  connect(this, &QLineEdit::editingFinished, this, &ValueEdit::TypingEnded);
}

void ValueEdit::SetWarning(const String& warning) {
  warning_ = warning;
  Mark();
}

void ValueEdit::Begin(const QString& value) {
  emit TypingEnded();
  first_ = value;
  setText(value);  // which forgets what could be undone
  Mark();          // also when signals are blocked
}

void ValueEdit::ShowValue(const QString& setting, const QString& value) {
  if (setting == setting_ && value == text()) return;
  setting_ = setting;
  Begin(value);
}

void ValueEdit::focusInEvent(QFocusEvent* event) {
  // Coming back from another window or a menu goes on with the edit.
  const Qt::FocusReason reason = event->reason();
  if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) first_ = text();
  QLineEdit::focusInEvent(event);
}

void ValueEdit::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Cancel) || isReadOnly() || text() == first_) {
    QLineEdit::keyPressEvent(event);
    return;
  }
  emit TypingEnded();  // so that undo brings back what was typed
  selectAll();
  insert(first_);
  emit TypingEnded();
}

void ValueEdit::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (accessibleDescription().isEmpty()) return;
  QPainter painter(this);
  PaintWarningFrame(painter, rect(), palette());
}

void ValueEdit::Mark() {
  if (warning_.empty()) return;
  const QString warning = ReadBackWarning(FromQString(text()), warning_);
  if (warning == accessibleDescription()) return;
  setAccessibleDescription(warning);
  setToolTip(ToToolTip(warning));
  // At once, since the mouse is elsewhere while the user types. Without a text the tip disappears.
  if (hasFocus()) QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this);
  update();
}

}  // namespace quenmar

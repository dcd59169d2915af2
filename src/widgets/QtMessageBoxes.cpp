#include "widgets/QtMessageBoxes.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMessageBox>
#include <QTextEdit>

#include "widgets/QtText.h"
#include "widgets/ShownCursor.h"

namespace quenmar {

namespace {

QMessageBox::Icon IconOf(int style) {
  if ((style & message_style::kCritical) != 0) return QMessageBox::Critical;
  if ((style & message_style::kQuestion) != 0) return QMessageBox::Question;
  if ((style & message_style::kInformation) != 0) return QMessageBox::Information;
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(int style) {
  switch (style & message_style::kButtons) {
    case message_style::kYesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case message_style::kYesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default:
      return QMessageBox::Ok;
  }
}

Button Pressed(int button) {
  switch (button) {
    case QMessageBox::Yes:
      return Button::kYes;
    case QMessageBox::No:
      return Button::kNo;
    case QMessageBox::Cancel:
      return Button::kCancel;
    default:
      return Button::kOk;
  }
}

/// Lines of files are read best unwrapped, below each other.
void AddDetails(QMessageBox& box, const QString& details) {
  box.setDetailedText(details);
  auto* const text = box.findChild<QTextEdit*>();
  text->setLineWrapMode(QTextEdit::NoWrap);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  const QFontMetrics metrics = text->fontMetrics();
  text->setFixedSize(metrics.averageCharWidth() * 80, metrics.lineSpacing() * 16);
}

}  // namespace

Button QtMessageBoxes::Show(const String& text, int style) {
  return ShowWithDetails(text, style, {});
}

Button QtMessageBoxes::ShowWithDetails(const String& text, int style, const String& details) {
  const QMessageBox::StandardButtons buttons = ButtonsOf(style);
  QMessageBox box(IconOf(style), title_, ToQString(text), buttons, QApplication::activeWindow());
  box.setObjectName("messageBox");
  box.setTextFormat(Qt::PlainText);
  if (!details.empty()) AddDetails(box, ToQString(details));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  if (buttons.testFlag(QMessageBox::No)) {
    const bool second = (style & message_style::kDefaultButton2) != 0;
    box.setDefaultButton(second ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(buttons.testFlag(QMessageBox::Cancel) ? QMessageBox::Cancel
                                                              : QMessageBox::No);
  }
  const ShownCursor normal(Qt::ArrowCursor);
  return Pressed(box.exec());
}

}  // namespace quenmar

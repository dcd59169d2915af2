#include "widgets/QtMessageBoxes.h"

#include <QApplication>

#include "widgets/MessageDialog.h"
#include "widgets/QtText.h"
#include "widgets/ShownCursor.h"

namespace quenmar {

namespace {

std::optional<QStyle::StandardPixmap> IconOf(int style) {
  if ((style & message_style::kCritical) != 0) return QStyle::SP_MessageBoxCritical;
  if ((style & message_style::kQuestion) != 0) return QStyle::SP_MessageBoxQuestion;
  if ((style & message_style::kInformation) != 0) return QStyle::SP_MessageBoxInformation;
  return {};
}

QDialogButtonBox::StandardButtons ButtonsOf(int style) {
  switch (style & message_style::kButtons) {
    case message_style::kYesNo:
      return QDialogButtonBox::Yes | QDialogButtonBox::No;
    case message_style::kYesNoCancel:
      return QDialogButtonBox::Yes | QDialogButtonBox::No | QDialogButtonBox::Cancel;
    default:
      return QDialogButtonBox::Ok;
  }
}

QDialogButtonBox::StandardButton DefaultOf(int style) {
  if ((style & message_style::kButtons) == message_style::kOk) return QDialogButtonBox::Ok;
  const bool second = (style & message_style::kDefaultButton2) != 0;
  return second ? QDialogButtonBox::No : QDialogButtonBox::Yes;
}

/// @param pressed a standard button, or 0 for none
Button AnswerOf(int pressed, int style) {
  switch (pressed) {
    case QDialogButtonBox::Yes:
      return Button::kYes;
    case QDialogButtonBox::No:
      return Button::kNo;
    case MessageDialog::kOffer:
      return Button::kOffer;
    default:
      return (style & message_style::kButtons) == message_style::kOk ? Button::kOk
                                                                     : Button::kCancel;
  }
}

/// Between two boxes no window may be active yet: the system activates one later.
QWidget* WindowToStandOver() {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* const active = QApplication::activeWindow()) return active;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() == Qt::Window) return window;
  }
  return nullptr;
}

}  // namespace

Button QtMessageBoxes::Show(const String& text, int style) {
  return ShowWithDetails(text, style, {}, {});
}

Button QtMessageBoxes::ShowWithDetails(const String& text, int style, const String& details,
                                       const String& offer) {
  MessageDialog box(ToQString(text), IconOf(style), ButtonsOf(style), ToQString(details),
                    WindowToStandOver());
  box.setObjectName("messageBox");
  box.setWindowTitle(title_);
  if (!offer.empty()) box.AddOffer(ToCaption(offer));
  box.SetDefaultButton(DefaultOf(style));
  const ShownCursor normal(Qt::ArrowCursor);
  return AnswerOf(box.exec(), style);
}

}  // namespace quenmar

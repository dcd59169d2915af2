#include "widgets/DragBar.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "widgets/Colours.h"

namespace quenmar {

namespace {

/// Screen readers would pass over a widget without a role.
QAccessibleInterface* MakeAccessibleBar(const QString& /*className*/, QObject* object) {
  auto* const bar = qobject_cast<DragBar*>(object);
  return bar == nullptr ? nullptr : new QAccessibleWidget(bar, QAccessible::Splitter);
}

}  // namespace

DragBar::DragBar(QWidget* parent) : QWidget(parent) {
  QAccessible::installFactory(MakeAccessibleBar);  // installing it again has no effect
  setCursor(Qt::SplitVCursor);
  setFocusPolicy(Qt::TabFocus);
  // In the toolkit's words, which it translates.
  setAccessibleName(QCoreApplication::translate("QMdiSubWindow", "&Size").remove('&'));
  const auto spelled = [](Qt::Key key) {
    return QKeySequence(key).toString(QKeySequence::NativeText);
  };
  setToolTip(accessibleName() + ": " + spelled(Qt::Key_Up) + ", " + spelled(Qt::Key_Down));
}

void DragBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pressed_ = qRound(event->globalPosition().y());
  emit Begun();
}

void DragBar::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0) return;
  emit Dragged(qRound(event->globalPosition().y()) - pressed_);
}

void DragBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Up && event->key() != Qt::Key_Down) {
    QWidget::keyPressEvent(event);
    return;
  }
  emit Begun();
  const int line = fontMetrics().lineSpacing();
  emit Dragged(event->key() == Qt::Key_Up ? -line : line);
}

void DragBar::paintEvent(QPaintEvent* /*event*/) {
  constexpr int kGripWidth = 24;
  constexpr int kGripHeight = 3;
  constexpr float kFaint = 0.5F;
  QRect grip(0, 0, kGripWidth, kGripHeight);
  grip.moveCenter(rect().center());
  QPainter painter(this);
  if (hasFocus()) {
    painter.fillRect(rect(), palette().highlight());
  } else {
    painter.fillRect(grip, Mixed(palette().color(QPalette::Window),
                                 palette().color(QPalette::WindowText), kFaint));
  }
}

}  // namespace quenmar

#include "widgets/ScreenFit.h"

#include <QFrame>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace quenmar {

namespace {

QMargins MarginsBetween(const QRect& outer, const QRect& inner) {
  return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
          outer.bottom() - inner.bottom()};
}

/// Window managers report the frame only of a window that they show.
QMargins FrameOf(const QWidget& window) {
  for (const QWidget* shown = &window; shown != nullptr; shown = shown->parentWidget()) {
    if (!shown->isWindow() || !shown->isVisible()) continue;
    const QMargins frame = MarginsBetween(shown->frameGeometry(), shown->geometry());
    if (!frame.isNull()) return frame;
  }
  const int border = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
  return {border, window.style()->pixelMetric(QStyle::PM_TitleBarHeight) + border, border, border};
}

}  // namespace

QSize LargestSize(const QWidget& window) {
  return window.screen()->availableGeometry().marginsRemoved(FrameOf(window)).size();
}

void FitToScreen(QWidget* window) {
  if ((window->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0) return;
  window->resize(window->size().boundedTo(LargestSize(*window)));
  if (!window->isVisible() && !window->testAttribute(Qt::WA_Moved)) return;
  const QMargins frame = FrameOf(*window);
  const QRect usable = window->screen()->availableGeometry();
  const QRect whole = QRect(window->geometry()).marginsAdded(frame);
  // The title bar counts most, so the left and the upper edge come last.
  const int x = std::max(usable.left(), std::min(whole.x(), usable.right() + 1 - whole.width()));
  const int y = std::max(usable.top(), std::min(whole.y(), usable.bottom() + 1 - whole.height()));
  if (QPoint(x, y) != whole.topLeft()) window->move(x, y);
}

QWidget* MakeScrollable(QWidget* content) {
  auto* const area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);  // Tab visits the controls, which scroll into sight
  area->setWidgetResizable(true);
  area->setWidget(content);
  return area;
}

}  // namespace quenmar

#include "widgets/CheckBox.h"

#include <QPainter>
#include <QStyleOptionButton>

#include "widgets/Colours.h"

namespace quenmar {

void CheckBox::DrawBorder(QPainter* painter, QRect box, const QColor& background,
                          const QColor& text) {
  constexpr float kContrast = 0.6F;
  painter->setPen(Mixed(background, text, kContrast));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(box.adjusted(0, 0, -1, -1));
}

void CheckBox::paintEvent(QPaintEvent* event) {
  QCheckBox::paintEvent(event);
  if (!isEnabled()) return;
  QStyleOptionButton option;
  initStyleOption(&option);
  QPainter painter(this);
  DrawBorder(&painter, style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this),
             palette().color(QPalette::Window), palette().color(QPalette::WindowText));
}

}  // namespace quenmar

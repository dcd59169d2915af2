#include "widgets/ListDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>

#include "widgets/CheckBox.h"
#include "widgets/Colours.h"

namespace quenmar {

namespace {

constexpr const char* kPaleProperty = "paleHighlight";  // a property of views
constexpr int kRoom = 3;                                // logical pixels above and below the text

/// Draws the border of the item's check box, where it has one.
void DrawBox(QPainter* painter, const QStyleOptionViewItem& item, const QStyle& style) {
  if (!item.features.testFlag(QStyleOptionViewItem::HasCheckIndicator)) return;
  const QRect box = style.subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, item.widget);
  CheckBox::DrawBorder(painter, box, item.palette.color(QPalette::Base),
                       item.palette.color(QPalette::Text));
}

}  // namespace

ListDelegate::ListDelegate(QAbstractItemView* view) : QStyledItemDelegate(view) {
  view->setItemDelegate(this);
}

void ListDelegate::SetPale(QAbstractItemView* view, bool pale) {
  if (view->property(kPaleProperty).toBool() == pale) return;
  view->setProperty(kPaleProperty, pale);
  view->viewport()->update();
}

void ListDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (option->widget == nullptr || !option->widget->property(kPaleProperty).toBool()) return;
  MakeHighlightPale(option->palette);
}

void ListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyleOptionViewItem item = option;
  initStyleOption(&item, index);
  Draw(painter, item);
}

void ListDelegate::Draw(QPainter* painter, const QStyleOptionViewItem& item) {
  const QStyle& style = item.widget != nullptr ? *item.widget->style() : *QApplication::style();
  style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
  painter->save();
  DrawBox(painter, item, style);
  painter->restore();
}

QSize ListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  return QStyledItemDelegate::sizeHint(option, index).grownBy({0, kRoom, 0, kRoom});
}

}  // namespace quenmar

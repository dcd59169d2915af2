#include "updater/SettingDelegate.h"

#include <QAbstractItemView>
#include <QPainter>
#include <algorithm>

#include "widgets/Colours.h"

namespace quenmar {

namespace {

constexpr int kGap = 8;  // logical pixels between columns

/// Writes one line, cut off with dots where it is too long.
/// @return how wide it is.
int Write(QPainter* painter, const QRect& place, const QFont& font, const QString& text) {
  painter->setFont(font);
  const QFontMetrics metrics(font, painter->device());
  const QString shown = metrics.elidedText(text, Qt::ElideRight, place.width());
  painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, shown);
  return metrics.horizontalAdvance(shown);
}

/// @return whether selected items have the palette's highlight. The style of Windows gives them a
/// pale one of its own below text of the usual colour.
bool InvertsSelection(const QStyle& style) { return !style.inherits("QWindowsVistaStyle"); }

}  // namespace

SettingDelegate::SettingDelegate(QAbstractItemView* view, int valueColumns)
    : ListDelegate(view), valueColumns_(valueColumns) {}

QList<QRect> SettingDelegate::Columns(const QStyleOptionViewItem& item) const {
  const QRect text = item.widget->style()
                         ->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget)
                         .adjusted(kGap / 2, 0, -kGap / 2, 0);
  // Each value has at least half of what the name has.
  const int name = std::min(nameWidth_ + kGap, text.width() * 2 / (2 + valueColumns_));
  const int value = (text.width() - name) / valueColumns_;
  QList<QRect> columns{{text.left(), text.top(), name - kGap, text.height()}};
  for (int i = 0; i < valueColumns_; ++i) {
    const bool last = i == valueColumns_ - 1;
    columns << QRect(text.left() + name + i * value, text.top(), last ? value : value - kGap,
                     text.height());
  }
  return columns;
}

void SettingDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  constexpr float kQuiet = 0.72F;  // of the text's colour, over the background's
  QStyleOptionViewItem item = option;
  initStyleOption(&item, index);
  const QList<QRect> columns = Columns(item);
  const QString name = item.text;
  item.text.clear();
  Draw(painter, item);

  const bool selected =
      item.state.testFlag(QStyle::State_Selected) && InvertsSelection(*item.widget->style());
  const QPalette::ColorGroup group =
      item.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
  const QColor under = item.palette.color(group, selected ? QPalette::Highlight : QPalette::Base);
  const QColor text =
      item.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
  const bool commentedOut = index.data(kCommentedOut).toBool();
  // On a highlight a paler text would have too little contrast.
  const QColor quiet = selected ? text : Mixed(under, text, kQuiet);
  painter->save();
  painter->setPen(commentedOut && !selected ? Mixed(under, text, kQuietest) : text);
  QFont nameFont = item.font;
  nameFont.setStrikeOut(index.data(kStruckOut).toBool());
  Write(painter, columns[0], nameFont, name);
  painter->setPen(quiet);
  QRect last = columns[1];
  int written = Write(painter, last, item.font, index.data(kValue).toString());
  QFont plain = item.font;
  plain.setBold(false);
  if (valueColumns_ > 1) {
    last = columns[2];
    if (const QString mark = index.data(kMark).toString(); !mark.isEmpty()) {
      last.setLeft(last.left() + Write(painter, last, item.font, mark) + kGap / 2);
    }
    written = Write(painter, last, plain, index.data(kOriginalValue).toString());
  }
  plain.setItalic(true);
  Write(painter, last.adjusted(written > 0 ? written + 2 * kGap : 0, 0, 0, 0), plain,
        index.data(kShortRemark).toString());
  painter->restore();
}

QSize SettingDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  return {0, ListDelegate::sizeHint(option, index).height()};
}

}  // namespace quenmar

#pragma once

#include <QStyledItemDelegate>

class QAbstractItemView;

namespace quenmar {

/// Draws the rows of lists with check boxes: with room around the text, with boxes that are visible
/// on a dark background, and with a pale highlight where `SetPale` asks for it.
class ListDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// @param view gets the delegate and owns it
  explicit ListDelegate(QAbstractItemView* view);

  /// Chooses between the full and the pale highlight of a view that has such a delegate.
  static void SetPale(QAbstractItemView* view, bool pale);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  /// Draws what the style draws, and the box.
  static void Draw(QPainter* painter, const QStyleOptionViewItem& item);
};

}  // namespace quenmar

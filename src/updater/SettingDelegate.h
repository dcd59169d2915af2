#pragma once

#include "widgets/ListDelegate.h"

namespace quenmar {

/// Draws settings in columns: the name, then the values and behind the last of them a note, all
/// these quieter than the name. A mark is drawn before the second value.
class SettingDelegate : public ListDelegate {
  Q_OBJECT

 public:
  /// What items have besides their names, which are their texts. A font of theirs is for the name
  /// and the first value.
  enum Role { kValue = Qt::UserRole, kOriginalValue, kMark, kNote, kCommentedOut, kStruckOut };

  /// @param valueColumns 1 or 2
  SettingDelegate(QAbstractItemView* view, int valueColumns);

  /// Makes the first column so wide, as far as the values still have room.
  void SetNameWidth(int width) { nameWidth_ = width; }

  /// @return where the columns begin and end in an item's row.
  [[nodiscard]] QList<QRect> Columns(const QStyleOptionViewItem& item) const;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

  /// A row is as wide as its list.
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override;

 private:
  int valueColumns_;
  int nameWidth_ = 0;
};

}  // namespace quenmar

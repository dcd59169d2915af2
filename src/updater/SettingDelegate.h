#pragma once

#include "widgets/ListDelegate.h"

namespace quenmar {

/// Draws settings in columns: the name, and in a paler colour the values with a note behind the
/// last one. A mark is drawn before the second value.
class SettingDelegate : public ListDelegate {
  Q_OBJECT

 public:
  /// The data of an item besides its text, which is the name. `Qt::FontRole` is for the name and
  /// the first value.
  enum Role {
    kValue = Qt::UserRole,
    kOriginalValue,
    kMark,
    kShortRemark,
    kCommentedOut,
    kStruckOut
  };

  /// @param valueColumns 1 or 2
  SettingDelegate(QAbstractItemView* view, int valueColumns);

  /// Sets the width of the first column, as far as it leaves room for the values.
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

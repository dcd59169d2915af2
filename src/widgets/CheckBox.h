#pragma once

#include <QCheckBox>

namespace quenmar {

/// A check box whose border has as much contrast as text has: that of the styles is hardly visible
/// in the dark while the box is not ticked.
class CheckBox : public QCheckBox {
  Q_OBJECT

 public:
  using QCheckBox::QCheckBox;

  /// Draws such a border.
  /// @param background,text colours of what the box is on
  static void DrawBorder(QPainter* painter, QRect box, const QColor& background,
                         const QColor& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace quenmar

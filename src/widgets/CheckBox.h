#pragma once

#include <QCheckBox>

namespace quenmar {

/// A check box whose border has the contrast of text: the border that styles draw around an empty
/// box is hardly visible on a dark background.
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

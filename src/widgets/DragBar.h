#pragma once

#include <QWidget>

namespace quenmar {

/// A bar on the border between two controls, which makes one higher and the other lower: by
/// dragging or, when it has the focus, with Up and Down. Its owner places it and moves the border.
class DragBar : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kHeight = 7;  ///< logical pixels

  explicit DragBar(QWidget* parent);

 signals:
  /// The user begins to move the border.
  void Begun();

  /// @param pixels how far below its place at the beginning the border is wanted
  void Dragged(int pixels);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  int pressed_ = 0;  // where on the screen
};

}  // namespace quenmar

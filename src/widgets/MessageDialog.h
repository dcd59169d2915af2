#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QStyle>
#include <optional>

class QPushButton;

namespace quenmar {

/// Text to be read, selected and copied; it scrolls where it has too little room. What is copied is
/// exactly what was given.
class MessageText : public QPlainTextEdit {
  Q_OBJECT

 public:
  MessageText(const QString& text, LineWrapMode mode);

  [[nodiscard]] bool Wraps() const { return lineWrapMode() != NoWrap; }

  /// Sets the size hint to the size of the whole text.
  /// @param widest pixels; longer lines wrap, inside a word where one fills a line. Lines of a text
  /// that does not wrap may be longer.
  void SetRoom(int widest);

  [[nodiscard]] QSize sizeHint() const override { return room_; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QSize room_;
};

/// One message box: a text beside an icon, buttons, and optional details. It is never larger than
/// the screen, and screen readers read it out as an alert.
class MessageDialog : public QDialog {
  Q_OBJECT

 public:
  /// @param icon the style's, or none
  /// @param details lines to look up; empty for none
  MessageDialog(const QString& text, std::optional<QStyle::StandardPixmap> icon,
                QDialogButtonBox::StandardButtons buttons, const QString& details, QWidget* parent);

  /// What `exec` returns for the button of `AddOffer`.
  static constexpr int kOffer = 1;

  /// Adds a button for something that can be done first.
  void AddOffer(const QString& caption);

  /// Makes a button the answer of Enter. `exec` returns the number of the standard button that was
  /// pressed, and 0 after Escape or the frame's own button.
  void SetDefaultButton(QDialogButtonBox::StandardButton button);

 protected:
  /// Copies the text, also while a button has the focus. The letter that is underlined in a button
  /// presses it, without any other key.
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void AddDetails(const QString& details);
  void LayOut(const QPixmap& icon);
  void Fit();
  /// @return the button whose underlined letter was typed; null for any other key.
  [[nodiscard]] QPushButton* ButtonOf(const QKeyEvent& event) const;

  MessageText* text_ = nullptr;
  QDialogButtonBox* buttons_;
  MessageText* details_ = nullptr;
};

}  // namespace quenmar

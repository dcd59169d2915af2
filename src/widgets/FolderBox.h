#pragma once

#include <QLineEdit>

namespace quenmar {

/// A line for a folder, with completion, that takes a dropped folder. What is typed counts once it
/// is complete (Enter, or leaving the box), so that no message interrupts the typing. Blanks around
/// it are cut off.
class FolderBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit FolderBox(QWidget* parent = nullptr);

  /// Gives the box a complete text, maybe the same again: the folder may have other files now.
  void SetFolder(const QString& folder);

  /// Takes what was typed for complete, if it is another text than before.
  void Complete();

  /// @return the last complete text.
  [[nodiscard]] const QString& Folder() const { return complete_; }

 signals:
  /// The box was given a complete text.
  void FolderChanged();

  /// The user dropped a folder here.
  void FolderDropped(const QString& folder);

  /// The user goes to another control.
  void Leaving();

  /// The user has gone to another control of the window, and the click that did so has had its
  /// effect.
  void Left();

 public:
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void focusOutEvent(QFocusEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  /// Enter takes what was typed, unless it chooses one of the completions offered.
  void Submit();

  void Leave();

  QString complete_;
  QString offered_;  ///< the completion that the user has gone to, and not chosen yet
};

}  // namespace quenmar

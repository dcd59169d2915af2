#pragma once

#include <QLineEdit>

namespace quenmar {

/// A line for a folder, with completion, that takes a dropped folder. What is typed counts once it
/// is complete (Enter, or leaving the box), so that nobody is disturbed while typing.
class FolderBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit FolderBox(QWidget* parent = nullptr);

  /// Gives the box a complete text, maybe the same again: what the folder holds may be another.
  void SetFolder(const QString& folder);

  /// Takes what was typed for complete.
  void Complete();

 signals:
  /// The box was given a complete text.
  void FolderChanged();

  /// The user dropped a folder here.
  void FolderDropped(const QString& folder);

  /// The user has gone to another control.
  void Left();

 public:
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void focusOutEvent(QFocusEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void Leave();

  QString complete_;
};

}  // namespace quenmar

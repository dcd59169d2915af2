#pragma once

#include <QDialog>
#include <cstdint>

#include "conf/SeriesView.h"
#include "widgets/FileContext.h"

class QPlainTextEdit;

namespace quenmar {

/// What the windows on one configuration file have in common: Apply, closing with and without
/// unsaved changes, and that Enter presses no button but the one that has the focus.
class FileWindow : public QDialog {
  Q_OBJECT

 public:
  FileWindow(FileContext context, QWidget* parent);

  /// @return 0 when nothing is unsaved, else what was set last.
  [[nodiscard]] std::int16_t Changed() const { return changed_; }

  /// Closes the window unless the user keeps unsaved changes; Escape and the window's frame come
  /// here, too.
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

  [[nodiscard]] const FileContext& Context() const { return context_; }

  /// Also shows or takes away the title's mark of unsaved changes.
  void SetChanged(std::int16_t changed);

  /// Sets the title; names of files in it may hold anything.
  void SetTitle(const String& title);

  /// What Apply does: asks, with the warnings in the question and the changes at hand, saves the
  /// server's file, and then has no unsaved changes.
  void Save(const Document& settings, const SeriesView& series);

  /// Shows a message. @return the pressed button.
  Button Ask(Message key, int style);

  /// Shows the comment of the setting or series entry of that name, by which the box is read out.
  static void ShowComment(QPlainTextEdit* box, StringView name, String comment);

  [[nodiscard]] QString Caption(Message key) const;  ///< to be shown
  [[nodiscard]] QString Text(Message key) const;     ///< to be read out

 private:
  FileContext context_;
  std::int16_t changed_ = 0;
};

}  // namespace quenmar

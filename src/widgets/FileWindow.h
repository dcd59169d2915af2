#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>
#include <vector>

#include "widgets/FileContext.h"

class QAction;
class QMenu;
class QPlainTextEdit;

namespace quenmar {

class SeriesTabs;

/// What the windows on one configuration file have in common: Apply, undo and redo, closing with
/// and without unsaved changes, and that Enter presses no button but the one that has the focus.
class FileWindow : public QDialog {
  Q_OBJECT

 public:
  FileWindow(FileContext context, QWidget* parent);

  /// @return 0 when nothing is unsaved, else the number of what was done last; see
  /// `FileMerge::Step`.
  [[nodiscard]] virtual std::int16_t Changed() const;

  /// Closes the window; asks first when changes are unsaved. Escape and the frame's close button
  /// call it, too.
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

  [[nodiscard]] FileMerge& Merge() const { return context_.merge; }
  [[nodiscard]] const Language& TheLanguage() const { return context_.with.language; }
  [[nodiscard]] const String& ServerFolder() const { return context_.serverFolder; }
  [[nodiscard]] const String& FileName() const { return context_.fileName; }

  /// Sets the title; names of files in it may contain anything.
  void SetTitle(const String& title);

  /// Updates the controls after a step was undone or redone.
  virtual void ShowMerge() = 0;

  /// Shows or takes away the title's mark of unsaved changes, and whether there is something to
  /// undo or to redo. To be called after every change.
  void ShowChanged();

  /// Lets the window handle undo and redo for a text control: its keys, and in a line edit the
  /// context menu, which also gets the control's own actions. What is typed in the control must be
  /// passed to the merge at once.
  void UndoInMerge(QWidget* control);

  /// Shows a context menu with the window's actions in the places of the toolkit's.
  /// @param place on the screen
  void ShowMenu(QMenu& menu, QPoint place);

  bool eventFilter(QObject* watched, QEvent* event) override;

  /// Fills the series.
  void Load(SeriesTabs* series) const;

  /// Shows which entries are on, with a sign behind those that the release has withdrawn. To be
  /// called after every change of one.
  void ShowEntries(SeriesTabs* series) const;

  /// What Apply does: asks, with the warnings in the question and the changes as its details, saves
  /// the server's file, and then has no unsaved changes.
  void Save();

  /// Comments the settings out, or makes them active where the current one is commented out. Those
  /// that cannot be are named in a message.
  /// @param show shows the new states, before the message
  void SwitchSettings(const std::vector<String>& names, StringView current,
                      const std::function<void()>& show);

  /// Shows a message. @return the pressed button.
  Button Ask(Message key, int style, std::initializer_list<StringView> placeholders = {});

  /// @return the caption of the button by which the question of Apply offers to do something first;
  /// empty for none.
  [[nodiscard]] virtual String Offer() const { return {}; }
  virtual void TakeOffer() {}

  /// @return a text that is added to the question on closing; may be empty.
  [[nodiscard]] virtual String ClosingRemark() const { return {}; }

  /// @return the word for mandatory or for optional.
  [[nodiscard]] const String& NeedOf(StringView name) const;

  /// @return a new box for comments, which can be read and copied by mouse and keyboard.
  QPlainTextEdit* MakeComments(QWidget* parent);

  /// Shows the comment of the setting or series entry of that name, by which the box is read out.
  static void ShowComment(QPlainTextEdit* box, StringView name, String comment);

  [[nodiscard]] QString Caption(Message key) const;  ///< to be shown
  [[nodiscard]] QString Text(Message key) const;     ///< to be read out

 private:
  void AddUndo();
  [[nodiscard]] bool AskToIgnore();
  [[nodiscard]] Button AskToApply(const String& warnings, const String& details);
  void Step(void (FileMerge::*step)());

  FileContext context_;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
};

}  // namespace quenmar

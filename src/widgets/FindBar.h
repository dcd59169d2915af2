#pragma once

#include <QWidget>
#include <vector>

#include "merge/SettingFilter.h"
#include "registry/Language.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;

namespace quenmar {

/// A bar in which the user says which settings of a window's lists are shown. It is hidden until
/// its key is pressed anywhere in the window, and again after Escape; a hidden one filters nothing.
/// Its object name is "pnlFind"; it contains "txtFind", "cmbFind" and "lblFind", which is the
/// count.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  /// @param choices what the user can choose from, the first one to begin with
  /// @param window gets the action "Find", and its keys are looked at; `setParent` may lay the bar
  ///   into a part of it
  FindBar(const Language& language, const std::vector<SettingFilter::Choice>& choices,
          QWidget* window);

  /// @return the action that opens the bar.
  [[nodiscard]] QAction* Action() const { return action_; }

  /// @return what is to be shown now.
  [[nodiscard]] SettingFilter Filter() const;

  [[nodiscard]] bool IsOpen() const { return !isHidden(); }

  /// Shows how many settings of how many are shown.
  void ShowCount(int shown, int all);

  /// Shows the bar, if need be, and puts the caret into its text.
  void Open();

  /// Hides the bar and forgets what is in it.
  void Close();

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  /// The bar was shown or hidden.
  void Toggled();

  /// Another filter is in effect from now on.
  void FilterChanged();

  /// The user leaves the bar, by Enter or Escape, and goes on with what it shows.
  void Accepted();

 private:
  void Fill(const std::vector<SettingFilter::Choice>& choices);
  void LayOut();

  const Language& language_;
  QAction* action_;
  QLabel* caption_;
  QLineEdit* text_;
  QComboBox* choice_;
  QLabel* count_;
};

}  // namespace quenmar

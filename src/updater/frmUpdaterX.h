#pragma once

#include <QDialog>
#include <array>

#include "conf/MessageBoxes.h"
#include "updater/ChangeComparison.h"
#include "widgets/FileContext.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidgetItem;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

namespace quenmar {

class ParameterList;
class SeriesTabs;

/// The window that compares one file's two versions and lets the user decide what the server's file
/// keeps: settings move between list 0 (new), list 1 (current) and list 2 (obsolete); Apply writes
/// list 1 and the series. Made anew for each comparison.
class frmUpdaterX : public QDialog {
  Q_OBJECT

 public:
  /// Compares the documents. The caller then fills the lists and the series, and shows the window.
  explicit frmUpdaterX(FileContext context, QWidget* parent = nullptr);

  /// Fills the three parameter lists from the result trees.
  void FillLists();

  /// Fills the series tabs, which changes the shared server documents. Throws `EndApplication`
  /// after a message when there are more kinds of series than tabs.
  void FillSeries();

  /// @return 0 when nothing is unsaved; otherwise what was done last: 1 a move between lists, 2 an
  /// edited value, 4 a series item ticked or unticked.
  [[nodiscard]] int Changed() const { return changed_; }

  /// Closes the window unless the user keeps unsaved changes; Escape and the window's frame come
  /// here, too.
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // The lists, and the pages that they stand on.
  static constexpr int kNew = 0;
  static constexpr int kActual = 1;
  static constexpr int kDeleted = 2;
  static constexpr int kChangesPage = 0;
  static constexpr int kCurrentPage = 1;

  // Setting up, in the order of the constructor.
  void MakeControls();
  void NameControls();
  void BuildChangesPage();
  void BuildCurrentPage();
  void BuildWindow();
  void OrderTabs();
  void ConnectControls();
  QGroupBox* MakeFrame(int list, MessageKey caption, QPushButton* help,
                       const QList<QWidget*>& below);

  void ShowSelected();
  void ShowHints();
  void UpdateButtons();
  void UpdateChangesPage();
  void SetChanged(int changed);

  void UndoTick(QListWidgetItem* item);
  void SelectAll(int list);
  void Move(int index);
  void Apply();

  [[nodiscard]] int ShownList() const;
  [[nodiscard]] const Document& Tree(int list) const;
  [[nodiscard]] String CurrentValue(int list) const;
  [[nodiscard]] String Comment(StringView name) const;
  [[nodiscard]] QString Caption(MessageKey key) const;
  Button Ask(MessageKey key, int style);

  FileContext context_;
  ChangeComparison comparison_;
  int changed_ = 0;
  int changesList_ = 0;  // the list of the page "Changes" that the user turned to last

  QTabWidget* tabLists_ = nullptr;
  std::array<ParameterList*, 3> lists_{};
  std::array<QPushButton*, 3> moves_{};
  std::array<QPushButton*, 3> selectAlls_{};  // none for list 1
  std::array<QPushButton*, 2> helps_{};
  std::array<QLabel*, 2> hints_{};  // by page
  QLabel* checkHint_ = nullptr;
  QLineEdit* originalValue_ = nullptr;
  QLineEdit* actualValue_ = nullptr;
  QLineEdit* value_ = nullptr;
  QPlainTextEdit* comments_ = nullptr;
  SeriesTabs* series_ = nullptr;
  QPushButton* apply_ = nullptr;
  QPushButton* close_ = nullptr;
};

}  // namespace quenmar

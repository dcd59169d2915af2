#pragma once

#include <array>
#include <optional>
#include <vector>

#include "compare/ReleaseChanges.h"
#include "widgets/FileWindow.h"

class QAction;
class QGroupBox;
class QLabel;
class QListWidgetItem;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

namespace quenmar {

class FindBar;
class ParameterList;
class SeriesTabs;
class ValueEdit;
struct SettingRow;

/// The window that compares one file's two versions and lets the user decide what the server's file
/// keeps: settings move between list 0 (new), list 1 (kept) and list 2 (obsolete); Apply writes
/// list 1 and the series. Each comparison needs a new window. `Changed` is described by
/// `FileMerge::Step`.
class frmUpdaterX : public FileWindow {
  Q_OBJECT

 public:
  /// Compares the documents. The caller then fills the lists and the series, and shows the window.
  explicit frmUpdaterX(FileContext context, QWidget* parent = nullptr);
  frmUpdaterX(const frmUpdaterX&) = delete;
  frmUpdaterX& operator=(const frmUpdaterX&) = delete;
  ~frmUpdaterX() override;

  /// Fills the three parameter lists from the result trees; only mandatory new settings are ticked.
  void FillLists() { FillListsTicking({}); }

  /// Fills the series tabs.
  void FillSeries();

 private:
  // The lists, and the pages that they are on.
  static constexpr int kNew = 0;
  static constexpr int kKept = 1;
  static constexpr int kObsolete = 2;
  static constexpr int kChangesPage = 0;
  static constexpr int kCurrentPage = 1;

  // Setting up, in the order of the constructor.
  void MakeControls();
  void MakeLabels();
  void MakeActions();
  void NameControls();
  void BuildChangesPage();
  void BuildCurrentPage();
  void BuildWindow();
  void OrderTabs();
  void ConnectControls();
  void ConnectLists();
  void ConnectEditors();
  void ConnectFindBar();
  QGroupBox* MakeFrame(int list, Message caption, QPushButton* help, const QList<QWidget*>& below);

  /// Fills the lists, and then ticks further items of each by their names.
  void FillListsTicking(const std::array<std::vector<String>, 3>& ticked);

  /// Fills the lists after a change and keeps the ticks.
  /// @param unticked a list whose visible ticks are dropped, if any
  void FillAgain(std::optional<int> unticked);
  void ShowMerge() override;

  /// @return the row that shows a field, without its tick.
  [[nodiscard]] SettingRow RowOf(int list, const Field& field) const;
  /// @return the remark about a setting: the whole of it, or without a changed default.
  [[nodiscard]] String RemarkOf(int list, StringView name) const;
  [[nodiscard]] String ShortRemarkOf(int list, StringView name) const;
  [[nodiscard]] std::optional<DefaultChange> DefaultChangeIn(int list, StringView name) const;

  /// Shows what a changed value or state has changed in the rows of those names.
  void RefreshRows(int list, const std::vector<String>& names);
  void ShowCount();
  void ShowLead();

  void ShowSelected();
  void ShowHints();
  void UpdateButtons();
  void UpdateDefaultActions();
  void UpdateChangesPage();

  void UndoTick(QListWidgetItem* item);
  void SelectAll(int list);
  void Move(int index);
  void AddMandatory();
  void TakeOldValue();
  void Switch();
  void TakeNewDefault();
  void TakeAllDefaults();
  void Apply();
  void ShowListMenu(int list, QPoint place);
  [[nodiscard]] String ClosingRemark() const override;
  [[nodiscard]] String Offer() const override;
  void TakeOffer() override;

  [[nodiscard]] int ShownList() const;
  [[nodiscard]] const Document& Tree(int list) const;
  [[nodiscard]] String CurrentValue(int list) const;

  int changesList_ = 0;  // the list of the page "Changes" that the user turned to last

  QTabWidget* tabLists_ = nullptr;
  std::array<ParameterList*, 3> lists_{};
  std::array<QPushButton*, 3> moves_{};
  std::array<QPushButton*, 3> selectAlls_{};  // none for list 1
  std::array<QPushButton*, 2> helps_{};
  QAction* addMandatory_ = nullptr;
  QAction* takeOldValue_ = nullptr;
  QAction* switch_ = nullptr;
  QAction* takeNewDefault_ = nullptr;
  QAction* takeAllDefaults_ = nullptr;
  std::array<QPushButton*, 2> actionButtons_{};   // for `addMandatory_`, `takeOldValue_`
  std::array<QPushButton*, 2> defaultButtons_{};  // for `takeNewDefault_`, `takeAllDefaults_`
  FindBar* find_ = nullptr;
  QPushButton* openFind_ = nullptr;
  std::array<QLabel*, 2> hints_{};    // by page
  std::array<QLabel*, 2> remarks_{};  // by page, visible while any setting has one
  QLabel* checkHint_ = nullptr;
  ValueEdit* originalValue_ = nullptr;
  ValueEdit* actualValue_ = nullptr;
  ValueEdit* value_ = nullptr;
  QPlainTextEdit* comments_ = nullptr;
  SeriesTabs* series_ = nullptr;
  QPushButton* apply_ = nullptr;
  QPushButton* close_ = nullptr;
};

}  // namespace quenmar

#pragma once

#include <QWidget>
#include <vector>

#include "app/FolderReports.h"
#include "app/OverviewModel.h"

class QLabel;
class QProgressBar;
class QSortFilterProxyModel;
class QTableView;

namespace quenmar {

/// A table with one row for each file of the distribution: what the file needs. The window can be
/// used while the files are read, which a progress bar shows; an empty table shows a reason.
class Overview : public QWidget {
  Q_OBJECT

 public:
  /// The references outlive the widget.
  /// @param seen the distribution's files as they were
  Overview(const Options& options, const Language& language, const SeenFiles& seen,
           QWidget* parent = nullptr);

  /// Lists files and reports on those that were not read yet or have changed since.
  void ShowFiles(const Path& distribution, const Path& server, const std::vector<String>& files);

  /// Empties the table and says why.
  void ShowReason(const QString& reason);

  /// Reports again on the files that have changed, and on all after a change of the options.
  void Refresh() { reports_.Refresh(); }

  /// Treats the file as changed.
  void Forget(const String& file) { reports_.Forget(file); }

  /// Selects the row of a file; without such a row, none.
  void Select(const String& file);

 signals:
  /// The user has gone to the row of a file.
  void FileSelected(const QString& file);

  /// The user wants the command on the selected file.
  void CheckChangesWanted();
  void EditWanted();

  /// Something in the folders has changed.
  void DiskChanged();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void CreateTable();
  void CreateColumns();
  void CreateActions();
  void CreateReason();
  void PaintReason();
  void CreateProgress();
  void LayOut();
  void Connect();

  void ShowProgress(int done, int all);
  /// Makes an action of the table, which its context menu offers.
  QAction* AddAction(const char* name, Message caption, const QList<QKeySequence>& keys);
  [[nodiscard]] QString Text(Message key) const;

  const Language& language_;
  FolderReports reports_;
  OverviewModel model_;
  int currentRow_ = -1;     ///< the selected row, where it was last scrolled to
  bool selecting_ = false;  ///< the window, not the user, changes the current row

  QSortFilterProxyModel* sorted_ = nullptr;
  QTableView* table_ = nullptr;
  QLabel* reason_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QAction* checkChanges_ = nullptr;
  QAction* edit_ = nullptr;
};

}  // namespace quenmar

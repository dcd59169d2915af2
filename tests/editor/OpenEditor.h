#pragma once

#include <QLineEdit>
#include <QListWidget>

#include "editor/EditGridView.h"
#include "editor/NEditForm.h"
#include "widgets/OpenWindow.h"

namespace quenmar {

/// An editor window on two texts.
class OpenEditor : public OpenWindow<NEditForm> {
 protected:
  OpenEditor() : OpenWindow(FileMerge::Purpose::kEdit, "Command3") {}

  void Fill() override {
    window_->LoadGrid();
    window_->LoadSeries();
    window_->resize(700, 600);
  }

  EditGridView* Grid() { return Find<EditGridView>("xEDG"); }
  QLineEdit* T() { return Find<QLineEdit>("T"); }
  QListWidget* Maps() { return Find<QListWidget>("lstSeries0"); }
  QModelIndex Index(int row, int col) { return Grid()->model()->index(row, col); }
  QString Cell(int row, int col, int role = Qt::DisplayRole) {
    return Index(row, col).data(role).toString();
  }
  bool Changed() { return window_->isWindowModified(); }

  /// @return the server's settings as they would be saved.
  std::string Settings() { return Values(merge_->ServerSettings()); }

  void ClickCell(int row, int col) {
    const QRect cell = Grid()->visualRect(Index(row, col));
    QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, {}, cell.center());
  }
};

}  // namespace quenmar

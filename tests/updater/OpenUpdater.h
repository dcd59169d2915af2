#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>

#include "updater/frmUpdaterX.h"
#include "widgets/OpenWindow.h"

namespace quenmar {

/// An updater window on two texts.
class OpenUpdater : public OpenWindow<frmUpdaterX> {
 protected:
  enum List : int { kNew, kKept, kObsolete };

  OpenUpdater() : OpenWindow(FileMerge::Purpose::kCompare, "cmdApply") {}

  void Fill() override {
    window_->FillLists();
    window_->FillSeries();
  }

  QListWidget* List(int index) { return Find<QListWidget>(QString("lstParameters%1").arg(index)); }
  QTabWidget* Pages() { return Find<QTabWidget>("tabLists"); }
  QString Text(const QString& editor) { return Find<QLineEdit>(editor)->text(); }
  QString Label(const QString& name) {
    return Pages()->currentWidget()->findChild<QLabel*>(name)->text();
  }
  bool IsEnabled(const QString& control) { return Find<QWidget>(control)->isEnabled(); }

  /// Replaces an editor's text by typing.
  void Type(const QString& editor, const QString& text) {
    Find<QLineEdit>(editor)->setFocus();
    Find<QLineEdit>(editor)->selectAll();
    QTest::keyClicks(Find<QLineEdit>(editor), text);
  }

  /// Clicks an item's text, or its check box.
  void Click(QListWidget* list, int row, bool box = false) {
    list->scrollToItem(list->item(row));
    const QRect item = list->visualItemRect(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      box ? QPoint(item.left() + 10, item.center().y()) : item.center());
  }
  void Click(int list, int row, bool box = false) { Click(List(list), row, box); }

  /// @return the visible items of a list, each with "+" before it when it is ticked.
  QString Items(const QListWidget* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) {
      const bool ticked = list->item(i)->checkState() == Qt::Checked;
      if (!list->item(i)->isHidden()) items << (ticked ? "+" : "") + list->item(i)->text();
    }
    return items.join(' ');
  }
  QString Items(int list) { return Items(List(list)); }

  /// @return the items of the three lists.
  QString Lists() { return Items(kNew) + " | " + Items(kKept) + " | " + Items(kObsolete); }
};

}  // namespace quenmar

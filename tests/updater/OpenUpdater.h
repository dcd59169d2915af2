#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>
#include <memory>

#include "ScratchFolder.h"
#include "Trees.h"
#include "updater/frmUpdaterX.h"
#include "widgets/GuiMessages.h"
#include "widgets/PrivateState.h"
#include "widgets/WindowVerbs.h"

namespace quenmar {

/// An updater window on two texts.
class OpenUpdater : public QObject {
 protected:
  enum List : int { kNew, kActual, kDeleted };

  /// Reads the two texts, and an old version of the first if there is one, and shows the window on
  /// them.
  void Open(std::string_view distribution, std::string_view server,
            Layout layout = Layout::kSettings, std::string_view old = {}) {
    window_.reset();
    folder_ = std::make_unique<ScratchFolder>();
    WriteFile(*folder_ / "dist", distribution);
    WriteFile(*folder_ / "a.conf", server);
    if (!old.empty()) WriteFile(*folder_ / "old", old);
    const MergeContext with{options_, language_, messages_};
    FileMerge::Request request{*folder_ / "dist", *folder_ / "a.conf"};
    request.layout = layout;
    request.base = *folder_ / "old";
    merge_ = FileMerge::Open(request, with);
    QVERIFY(merge_ != nullptr);
    window_ = std::make_unique<frmUpdaterX>(
        FileContext{*merge_, with, PathText(folder_->Folder()), u"a.conf"});
    window_->FillLists();
    window_->FillSeries();
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    messages_.Take();
  }

  template <class Control>
  Control* Find(const QString& name) {
    return window_->findChild<Control*>(name);
  }
  QListWidget* List(int index) { return Find<QListWidget>(QString("lstParameters%1").arg(index)); }
  QTabWidget* Pages() { return Find<QTabWidget>("tabLists"); }
  QString Text(const QString& editor) { return Find<QLineEdit>(editor)->text(); }
  QString Comments() { return Find<QPlainTextEdit>("txtComments")->toPlainText(); }
  QString Label(const QString& name) {
    return Pages()->currentWidget()->findChild<QLabel*>(name)->text();
  }
  bool IsEnabled(const QString& control) { return Find<QWidget>(control)->isEnabled(); }

  void Keys(const QString& keys) { PressKeys(*window_, keys); }
  void Press(const QString& button) {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
  }

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

  /// Presses Apply and then Yes. @return what the file contains then.
  std::string Applied() {
    messages_.Answer({Button::kYes});
    Press("cmdApply");
    return ReadFile(*folder_ / "a.conf");
  }

  PrivateState state_;
  std::unique_ptr<ScratchFolder> folder_;
  Options options_;
  Language language_;
  GuiMessages messages_;
  std::unique_ptr<FileMerge> merge_;
  std::unique_ptr<frmUpdaterX> window_;
};

}  // namespace quenmar

#pragma once

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

namespace quenmar {

inline constexpr const char* kDistribution =
    "// The first.\r\nneed: 1\r\n\r\n//may: 2\r\n\r\n// Both know me.\r\nkeep: 3\r\n\r\n//free: 4"
    "\r\n\r\nmust: 5\r\n\r\nmap: town\r\nmap: inn\r\nnpc: guard\r\n";
inline constexpr const char* kServer =
    "// Mine.\r\nown: 9\r\n\r\nkeep: 30\r\n\r\nfree: 40\r\n\r\nmust: 50\r\n\r\nold: 8\r\n\r\n"
    "map: town\r\n//map: home\r\n";

/// An updater window on two texts.
class OpenUpdater : public QObject {
 protected:
  /// Reads the two texts and shows the window on them.
  void Open(std::string_view distribution = kDistribution, std::string_view server = kServer) {
    window_.reset();
    WriteFile(*folder_ / "dist", distribution);
    WriteFile(*folder_ / "a.conf", server);
    const MergeContext with{options_, language_, messages_};
    FileMerge::Request request{*folder_ / "dist", *folder_ / "a.conf"};
    request.layout = layout_;
    request.base = *folder_ / "old";  // a test may write it
    merge_ = FileMerge::Open(request, with);
    QVERIFY(merge_ != nullptr);
    window_ = std::make_unique<frmUpdaterX>(
        FileContext{*merge_, with, PathText(folder_->Folder()), u"a.conf"});
    window_->FillLists();
    window_->FillSeries();
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  }

  template <class Control>
  Control* Find(const QString& name) {
    return window_->findChild<Control*>(name);
  }
  QListWidget* List(int index) { return Find<QListWidget>(QString("lstParameters%1").arg(index)); }
  QTabWidget* Pages() { return Find<QTabWidget>("tabLists"); }
  QLabel* Hint() { return Pages()->currentWidget()->findChild<QLabel*>("lblHint"); }
  QString Comments() { return Find<QPlainTextEdit>("txtComments")->toPlainText(); }
  void Press(const QString& button) {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
  }

  /// Replaces an editor's text by typing.
  void Type(const QString& editor, const QString& text) {
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

  /// @return the items of a list, each with "+" before it when it is ticked.
  QString Items(const QListWidget* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) {
      const bool ticked = list->item(i)->checkState() == Qt::Checked;
      items << (ticked ? "+" : "") + list->item(i)->text();
    }
    return items.join(' ');
  }
  QString Items(int list) { return Items(List(list)); }

  /// Presses Apply, answers No to the offer to add what is missing, and then Yes. @return what the
  /// file then holds.
  std::string Applied() {
    messages_.Answer({Button::kYes});
    Press("cmdApply");
    return ReadFile(*folder_ / "a.conf");
  }

  PrivateState state_;
  std::unique_ptr<ScratchFolder> folder_;
  Options options_;
  Layout layout_ = Layout::kSettings;
  Language language_;
  GuiMessages messages_;
  std::unique_ptr<FileMerge> merge_;
  std::unique_ptr<frmUpdaterX> window_;
};

}  // namespace quenmar

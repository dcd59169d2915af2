#include <QComboBox>
#include <QHeaderView>
#include <QLabel>

#include "editor/OpenEditor.h"
#include "widgets/DragBar.h"
#include "widgets/StateFile.h"

namespace quenmar {
namespace {

constexpr auto kMany = "a: 1\r\nb: 2\r\nc: 3\r\nd: 4\r\n";
constexpr auto kManyOnServer = "a: 1\r\nb: 9\r\n//c: 3\r\nd: 8\r\nown: 5\r\nmap: m1\r\n";

}  // namespace

class EditorFindTest : public OpenEditor {
  Q_OBJECT

  /// @return the names in the visible rows, marked with "*" where the row's head is.
  QString Rows() {
    QStringList names;
    for (int row = 0; row < Grid()->model()->rowCount(); ++row) {
      const auto head = Grid()->model()->headerData(row, Qt::Vertical).toString();
      if (!Grid()->isRowHidden(row)) names << Cell(row, 0) + head;
    }
    return names.join(' ');
  }
  QFont Font(int row, int col) { return Index(row, col).data(Qt::FontRole).value<QFont>(); }

 private slots:
  void showsTheRowsThatAreFound() {
    Open(kMany, kManyOnServer);
    const int before = Grid()->y();
    auto* const bar = Find<QWidget>("pnlFind");
    Keys("Ctrl+F");
    QVERIFY(bar->isVisible() && bar->y() >= before && bar->geometry().bottom() < Grid()->y());
    Find<QComboBox>("cmbFind")->setCurrentIndex(1);
    QCOMPARE(Rows(), "b d");
    QCOMPARE(Find<QLabel>("lblFind")->text(), "2 of 5");

    // Editing goes over these rows, which stay while they are edited.
    Keys("Return Right 2 Down 0 Down");
    QCOMPARE(Settings(), "a=1 b=2 c=3 d=80 own=5");
    QCOMPARE(Rows(), "b* d*");
    Keys("Return Esc");
    QVERIFY(window_->isVisible() && bar->isHidden() && Grid()->y() == before);
    QCOMPARE(Rows(), "a b* c d* own");

    Keys("Ctrl+F");
    QVERIFY(Find<QLineEdit>("txtFind")->toolTip().contains("Ctrl+F"));
    QCOMPARE(Rows(), "a b* c d* own");  // asked for anew
    Keys("n o n e");
    QCOMPARE(Rows(), "");
    Keys("Return 7");
    QCOMPARE(Settings(), "a=1 b=2 c=3 d=80 own=5");
    QCOMPARE(Comment(), "** n/a **");
  }

  void setsSelectedRowsToTheirOriginalValues() {
    Open(kMany, kManyOnServer);
    Keys("Shift+Down Shift+Down Shift+Down Ctrl+R");
    QCOMPARE(Settings(), "a=1 b=2 c=3 d=4 own=5");
    QCOMPARE(Cell(3, 1), "4");
    Keys("Ctrl+Z");
    QCOMPARE(Settings(), "a=1 b=9 c=3 d=8 own=5");
    Keys("Up Up Ctrl+Home Ctrl+R");  // leaves no row selected behind
    QVERIFY(!Changed());

    ClickCell(0, 0);
    QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Grid()->visualRect(Index(1, 1)).center());
    QVERIFY(T()->isHidden());  // selected, not edited

    // A hidden row is not selected with those around it.
    Keys("Ctrl+F 8 Return Ctrl+A Ctrl+R");
    QCOMPARE(Settings(), "a=1 b=9 c=3 d=4 own=5");
  }

  void marksRowsAndSwitchesThem() {
    for (const Layout layout : {Layout::kSettings, Layout::kServer}) {
      const bool keeps = layout == Layout::kServer;
      Open(kMany, std::string(kManyOnServer).append("note: 1\r\n"), layout);
      QVERIFY(Font(1, 1).bold() && !Font(0, 1).bold() && !Font(4, 1).bold());
      QCOMPARE(Font(2, 0).strikeOut(), keeps);
      QCOMPARE(Cell(2, 0, Qt::AccessibleDescriptionRole),
               keeps ? "commented out" : "commented out, becomes active when saved");
      QCOMPARE(Find<QAction>("Switch")->isEnabled(), keeps);
    }
    ClickCell(5, 0);
    Keys("Ctrl+T");
    QVERIFY(messages_.Take().front().startsWith("[64] The setting note cannot"));
    ClickCell(2, 0);
    Keys("Ctrl+T");
    QVERIFY(!Font(2, 0).strikeOut());
    QCOMPARE(Rows(), "a b c* d own note");
    ClickCell(0, 0);
    Keys("Ctrl+T");
    QCOMPARE(Rows(), "a* b c* d own note");
    Keys("Ctrl+Z");
    QVERIFY(Applied().find("\nc: 3") != std::string::npos);
    QCOMPARE(Rows(), "a b c d own note");
  }

  void marksWhatTheReleaseHasChanged() {
    Open(kMany, kManyOnServer, Layout::kSettings, "a: 1\r\nb: 1\r\nd: 8\r\nmap: m1\r\n");
    for (const auto* const shown : {u"m1  \u25CB", u"m1"}) {
      QCOMPARE(Maps()->item(0)->text(), QString::fromUtf16(shown));
      QTest::keyClick(Maps(), Qt::Key_Space);
    }
    const auto signs = [this] {
      QString all;
      for (int row = 0; row < 5; ++row) {
        all += Cell(row, 2, EditGridModel::kSign) + Cell(row, 2) + ' ';
      }
      return all;
    };
    QCOMPARE(signs(), QString::fromUtf16(u"1 \u25C62 3 \u25CF4  "));
    QCOMPARE(Cell(3, 2, Qt::ToolTipRole),
             "the release has changed this default; Old default: 8; New default: 4");
    Keys("Ctrl+F");
    Find<QComboBox>("cmbFind")->setCurrentIndex(2);
    QCOMPARE(Rows(), "b d");
    ClickCell(3, 2);
    Keys("Ctrl+R");
    QCOMPARE(signs(), QString::fromUtf16(u"1 \u25C62 3 4  "));
  }

  void remembersColumnsAndFillsTheWidth() {
    const auto lastEnds = [this] {
      const QHeaderView& header = *Grid()->horizontalHeader();
      return header.sectionPosition(3) + header.sectionSize(3);
    };
    Open(kMany, kManyOnServer);
    window_->resize(1200, 600);
    QTRY_COMPARE(lastEnds(), Grid()->viewport()->width());
    Grid()->horizontalHeader()->resizeSection(0, 333);
    QCOMPARE(lastEnds(), Grid()->viewport()->width());
    OpenAgain();
    QCOMPARE(Grid()->columnWidth(0), 333);
    window_->resize(400, 600);
    QTRY_VERIFY(Grid()->viewport()->width() < 400);
    QVERIFY(lastEnds() > 500);  // and scrolls
  }

  void makesTheCommentsHigher() {
    for (const char* const server : {"a: 1\r\n", kManyOnServer}) {
      Open(kMany, server);
      auto* const box = Comments();
      auto* const bar = Find<DragBar>("dragComments");
      const int before = box->height();
      const int away = bar->y() < box->y() ? -20 : 20;
      QTest::mousePress(bar, Qt::LeftButton, {}, {50, 3});
      QTest::mouseMove(bar, {50, 3 + away});
      QTest::mouseRelease(bar, Qt::LeftButton, {}, {50, 3 + away});
      QTRY_COMPARE(box->height(), before + 20);
      bar->setFocus();
      Keys(away < 0 ? "Down" : "Up");
      QVERIFY(box->height() < before + 20);
      for (int i = 0; i < 99; ++i) Keys(away < 0 ? "Up" : "Down");
      QVERIFY(Grid()->height() > 60);
      QVERIFY(box->geometry().bottom() < Find<QPushButton>("Command3")->y());
      const int high = box->height();
      OpenAgain();
      QCOMPARE(Comments()->height(), high);
      window_.reset();
      StateFile().clear();
    }
  }

  void showsWhatTheCommentIsAbout() {
    Open("// theirs\r\na: 1\r\n// same\r\nb: 2\r\n",
         "// mine\r\na: 1\r\n// same\r\nb: 2\r\nmap: m1\r\n//map: m2\r\n");
    const auto highlight = [](const QWidget* list) {
      return list->palette().color(QPalette::Active, QPalette::Highlight);
    };
    QCOMPARE(Comment(), "mine\n\nThe distribution's comment:\ntheirs");
    const QColor strong = highlight(Grid());
    QVERIFY(highlight(Maps()) != strong);
    Maps()->setFocus();
    QCOMPARE(highlight(Maps()), strong);
    QVERIFY(highlight(Grid()) != strong);
    QCOMPARE(Comment(), "** n/a **");
    Comments()->setFocus();
    QCOMPARE(highlight(Maps()), strong);
    ClickCell(1, 1);
    QCOMPARE(highlight(Grid()), strong);
    QCOMPARE(Comment(), "same");
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::EditorFindTest)
#include "EditorFindTest.moc"

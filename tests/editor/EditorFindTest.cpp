#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>

#include "editor/OpenEditor.h"
#include "widgets/DragBar.h"
#include "widgets/PrivateState.h"

namespace quenmar {
namespace {

constexpr auto kMany = "a: 1\r\nb: 2\r\nc: 3\r\nd: 4\r\n";
constexpr auto kManyOnServer = "a: 1\r\nb: 9\r\n//c: 3\r\nd: 8\r\nown: 5\r\nmap: m1\r\n";

Options Keeping(Layout layout) {
  Options options;
  options.layout = layout;
  return options;
}

}  // namespace

class EditorFindTest : public QObject {
  Q_OBJECT

  PrivateState state_;

  /// @return the names in the visible rows, marked with "*" where the row's head is.
  static QString Rows(const Editor& editor) {
    QStringList names;
    for (int row = 0; row < editor.Grid()->model()->rowCount(); ++row) {
      const auto head = editor.Grid()->model()->headerData(row, Qt::Vertical).toString();
      if (!editor.Grid()->isRowHidden(row)) names << editor.Cell(row, 0) + head;
    }
    return names.join(' ');
  }
  static QVariant Role(const Editor& editor, int row, int col, int role) {
    return editor.Grid()->model()->index(row, col).data(role);
  }
  static QFont Font(const Editor& editor, int row, int col) {
    return Role(editor, row, col, Qt::FontRole).value<QFont>();
  }

 private slots:
  void showsTheRowsThatAreFound() {
    Editor editor(kMany, kManyOnServer);
    const QRect before = editor.Grid()->geometry();
    auto* const bar = editor.Find<QWidget>("pnlFind");
    auto* const choice = editor.Find<QComboBox>("cmbFind");
    QTest::keySequence(editor.Grid(), QKeySequence::Find);
    QVERIFY(bar->isVisible() && bar->geometry().bottom() < editor.Grid()->y());
    QCOMPARE(editor.Grid()->geometry().bottom(), before.bottom());
    choice->setCurrentIndex(1);
    QCOMPARE(Rows(editor), QString("b d"));
    QCOMPARE(editor.Find<QLabel>("lblFind")->text(), QString("2 of 5"));

    // Editing goes over these rows, which stay while they are edited.
    QTest::keyClick(editor.Find<QLineEdit>("txtFind"), Qt::Key_Return);
    QVERIFY(editor.Grid()->hasFocus());
    QTest::keyClick(editor.Grid(), Qt::Key_Right);
    QTest::keyClicks(editor.Grid(), "2");
    QTest::keyClick(editor.T(), Qt::Key_Down);
    QTest::keyClicks(editor.T(), "0");
    QTest::keyClick(editor.T(), Qt::Key_Down);
    QCOMPARE(editor.Settings(), std::string("a=1 b=2 c=3 d=80 own=5"));
    QCOMPARE(Rows(editor), QString("b* d*"));
    QTest::keyClick(editor.T(), Qt::Key_Return);
    QTest::keyClick(editor.Grid(), Qt::Key_Escape);
    QVERIFY(editor.form->isVisible() && bar->isHidden());
    QCOMPARE(editor.Grid()->geometry(), before);
    QCOMPARE(Rows(editor), QString("a b* c d* own"));

    QTest::keySequence(editor.Grid(), QKeySequence::Find);
    QTest::keyClicks(editor.Find<QLineEdit>("txtFind"), "nothing");
    QCOMPARE(Rows(editor), QString());
    editor.Grid()->setFocus();
    QTest::keyClicks(editor.Grid(), "7");
    QCOMPARE(editor.Settings(), std::string("a=1 b=2 c=3 d=80 own=5"));
    QCOMPARE(editor.Comment(), QString("** n/a **"));
  }

  void setsSelectedRowsToTheirOriginalValues() {
    Editor editor(kMany, kManyOnServer);
    for (int i = 0; i < 3; ++i) QTest::keyClick(editor.Grid(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(editor.Grid(), Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(editor.Settings(), std::string("a=1 b=2 c=3 d=4 own=5"));
    QCOMPARE(Rows(editor), QString("a b* c d* own"));
    QCOMPARE(editor.Cell(3, 1), QString("4"));
    QTest::keySequence(editor.Grid(), QKeySequence::Undo);
    QCOMPARE(editor.Settings(), std::string("a=1 b=9 c=3 d=8 own=5"));
    QVERIFY(!editor.Changed());

    // A hidden row is not selected with those around it.
    QTest::keySequence(editor.Grid(), QKeySequence::Find);
    QTest::keyClicks(editor.Find<QLineEdit>("txtFind"), "8");
    editor.Grid()->setFocus();
    QTest::keySequence(editor.Grid(), QKeySequence::SelectAll);
    editor.form->findChild<QAction*>("SetToOriginal")->trigger();
    QCOMPARE(editor.Settings(), std::string("a=1 b=9 c=3 d=4 own=5"));
  }

  void marksRowsAndSwitchesThem() {
    for (const Layout layout : {Layout::kServer, Layout::kSettings}) {
      const bool keeps = layout == Layout::kServer;
      Editor editor(kMany, std::string(kManyOnServer) + "note: 1\r\n", Keeping(layout));
      QVERIFY(Font(editor, 1, 1).bold() && !Font(editor, 0, 1).bold() &&
              !Font(editor, 4, 1).bold());
      QCOMPARE(Font(editor, 2, 0).strikeOut(), keeps);
      QCOMPARE(Role(editor, 2, 0, Qt::AccessibleDescriptionRole).toString(),
               QString(keeps ? "commented out" : "commented out, becomes active when saved"));
      QCOMPARE(editor.form->findChild<QAction*>("Switch")->isEnabled(), keeps);
      if (!keeps) continue;
      editor.ClickCell(5, 0);
      QTest::keyClick(editor.Grid(), Qt::Key_T, Qt::ControlModifier);
      QCOMPARE(editor.messages.Take().size(), 1);  // a note cannot be commented out
      editor.ClickCell(2, 0);
      QTest::keyClick(editor.Grid(), Qt::Key_T, Qt::ControlModifier);
      QVERIFY(!Font(editor, 2, 0).strikeOut());
      QCOMPARE(Rows(editor), QString("a b c* d own note"));
      editor.messages.Answer({Button::kYes});
      editor.Press("Command3");
      QCOMPARE(Rows(editor), QString("a b c d own note"));
      QVERIFY(ReadFile(editor.folder / "conf" / "a.conf").find("\nc: 3") != std::string::npos);
    }
  }

  void marksDefaultsThatTheReleaseHasChanged() {
    Editor editor(kMany, kManyOnServer, {}, "a: 1\r\nb: 1\r\nd: 8\r\n");
    const auto signs = [&editor] {
      QString all;
      for (int row = 0; row < 5; ++row) {
        all += Role(editor, row, 2, EditGridModel::kSign).toString() + editor.Cell(row, 2) + ' ';
      }
      return all;
    };
    QCOMPARE(signs(), QString::fromUtf16(u"1 \u25C62 3 \u25CF4  "));
    for (const int role : {Qt::ToolTipRole, Qt::AccessibleDescriptionRole}) {
      QCOMPARE(Role(editor, 3, 2, role).toString(),
               QString("the release has changed this default; Old default: 8; New default: 4"));
    }
    QTest::keySequence(editor.Grid(), QKeySequence::Find);
    editor.Find<QComboBox>("cmbFind")->setCurrentIndex(2);
    QCOMPARE(Rows(editor), QString("b d"));
    editor.ClickCell(3, 2);
    QTest::keyClick(editor.Grid(), Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(signs(), QString::fromUtf16(u"1 \u25C62 3 4  "));
  }

  void remembersColumnsAndFillsTheWidth() {
    const auto lastEnds = [](const Editor& editor) {
      const QHeaderView& header = *editor.Grid()->horizontalHeader();
      return header.sectionPosition(3) + header.sectionSize(3);
    };
    Editor editor(kMany, kManyOnServer);
    editor.form->resize(1200, 600);
    QTRY_COMPARE(lastEnds(editor), editor.Grid()->viewport()->width());
    editor.Grid()->horizontalHeader()->resizeSection(0, 333);
    QCOMPARE(lastEnds(editor), editor.Grid()->viewport()->width());
    editor.Open();
    QCOMPARE(editor.Grid()->columnWidth(0), 333);
    editor.form->resize(400, 600);
    QTRY_VERIFY(editor.Grid()->viewport()->width() < 400);
    QVERIFY(lastEnds(editor) > 500);  // and scrolls
  }

  void makesTheCommentsHigher() {
    for (const char* const server : {"a: 1\r\n", kManyOnServer}) {
      Editor editor(kMany, server);
      auto* const box = editor.Find<QPlainTextEdit>("Comments");
      auto* const bar = editor.Find<DragBar>("dragComments");
      const int before = box->height();
      const int away = bar->y() < box->y() ? -20 : 20;
      QTest::mousePress(bar, Qt::LeftButton, {}, {50, 3});
      QTest::mouseMove(bar, {50, 3 + away});
      QTest::mouseRelease(bar, Qt::LeftButton, {}, {50, 3 + away});
      QTRY_COMPARE(box->height(), before + 20);
      QTest::keyClick(bar, away < 0 ? Qt::Key_Down : Qt::Key_Up);
      QVERIFY(box->height() < before + 20);
      for (int i = 0; i < 99; ++i) QTest::keyClick(bar, away < 0 ? Qt::Key_Up : Qt::Key_Down);
      QVERIFY(editor.Grid()->height() > 60);
      QVERIFY(box->geometry().bottom() < editor.Find<QPushButton>("Command3")->y());
    }
  }

  void showsWhatTheCommentIsAbout() {
    Editor editor("// theirs\r\na: 1\r\n// same\r\nb: 2\r\n",
                  "// mine\r\na: 1\r\n// same\r\nb: 2\r\nmap: m1\r\n//map: m2\r\n");
    const auto highlight = [](const QWidget* list) {
      return list->palette().color(QPalette::Active, QPalette::Highlight);
    };
    QCOMPARE(editor.Comment(), QString("mine\n\nThe distribution's comment:\ntheirs"));
    const QColor strong = highlight(editor.Grid());
    QVERIFY(highlight(editor.List(0)) != strong);
    editor.List(0)->setFocus();
    QCOMPARE(highlight(editor.List(0)), strong);
    QVERIFY(highlight(editor.Grid()) != strong);
    QCOMPARE(editor.Comment(), QString("** n/a **"));
    editor.Find<QPlainTextEdit>("Comments")->setFocus();
    QCOMPARE(highlight(editor.List(0)), strong);
    editor.ClickCell(1, 1);
    QCOMPARE(highlight(editor.Grid()), strong);
    QCOMPARE(editor.Comment(), QString("same"));
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::EditorFindTest)
#include "EditorFindTest.moc"

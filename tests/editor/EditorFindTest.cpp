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
  static QString Role(const Editor& editor, int row, int col, int role) {
    return editor.Grid()->model()->index(row, col).data(role).toString();
  }
  static QFont Font(const Editor& editor, int row, int col) {
    return editor.Grid()->model()->index(row, col).data(Qt::FontRole).value<QFont>();
  }

 private slots:
  void showsTheRowsThatAreFound() {
    Editor editor(kMany, kManyOnServer);
    const QRect before = editor.Grid()->geometry();
    auto* const bar = editor.Find<QWidget>("pnlFind");
    editor.Keys("Ctrl+F");
    QVERIFY(bar->isVisible() && bar->geometry().bottom() < editor.Grid()->y());
    QCOMPARE(editor.Grid()->geometry().bottom(), before.bottom());
    editor.Find<QComboBox>("cmbFind")->setCurrentIndex(1);
    QCOMPARE(Rows(editor), "b d");
    QCOMPARE(editor.Find<QLabel>("lblFind")->text(), "2 of 5");

    // Editing goes over these rows, which stay while they are edited.
    editor.Keys("Return Right 2 Down 0 Down");
    QCOMPARE(editor.Settings(), "a=1 b=2 c=3 d=80 own=5");
    QCOMPARE(Rows(editor), "b* d*");
    editor.Keys("Return Esc");
    QVERIFY(editor.form->isVisible() && bar->isHidden());
    QCOMPARE(editor.Grid()->geometry(), before);
    QCOMPARE(Rows(editor), "a b* c d* own");

    editor.Keys("Ctrl+F");
    QVERIFY(editor.Find<QLineEdit>("txtFind")->toolTip().contains("Ctrl+F"));
    QCOMPARE(Rows(editor), "a b* c d* own");  // asked for anew
    editor.Keys("n o n e");
    QCOMPARE(Rows(editor), "");
    editor.Keys("Return 7");
    QCOMPARE(editor.Settings(), "a=1 b=2 c=3 d=80 own=5");
    QCOMPARE(editor.Comment(), "** n/a **");
  }

  void setsSelectedRowsToTheirOriginalValues() {
    Editor editor(kMany, kManyOnServer);
    editor.Keys("Shift+Down Shift+Down Shift+Down Ctrl+R");
    QCOMPARE(editor.Settings(), "a=1 b=2 c=3 d=4 own=5");
    QCOMPARE(Rows(editor), "a b* c d* own");
    QCOMPARE(editor.Cell(3, 1), "4");
    editor.Keys("Ctrl+Z");
    QCOMPARE(editor.Settings(), "a=1 b=9 c=3 d=8 own=5");
    QVERIFY(!editor.Changed());
    editor.Keys("Down Ctrl+Home Ctrl+R");  // leaves no row selected behind
    QVERIFY(!editor.Changed());

    // A hidden row is not selected with those around it.
    editor.Keys("Ctrl+F 8 Return Ctrl+A Ctrl+R");
    QCOMPARE(editor.Settings(), "a=1 b=9 c=3 d=4 own=5");
  }

  void marksRowsAndSwitchesThem() {
    for (const Layout layout : {Layout::kServer, Layout::kSettings}) {
      const bool keeps = layout == Layout::kServer;
      Options options;
      options.layout = layout;
      Editor editor(kMany, std::string(kManyOnServer) + "note: 1\r\n", options);
      QVERIFY(Font(editor, 1, 1).bold() && !Font(editor, 0, 1).bold());
      QVERIFY(!Font(editor, 4, 1).bold());
      QCOMPARE(Font(editor, 2, 0).strikeOut(), keeps);
      QCOMPARE(Role(editor, 2, 0, Qt::AccessibleDescriptionRole),
               keeps ? "commented out" : "commented out, becomes active when saved");
      QCOMPARE(editor.Find<QAction>("Switch")->isEnabled(), keeps);
      if (!keeps) continue;
      editor.ClickCell(5, 0);
      editor.Keys("Ctrl+T");
      QCOMPARE(editor.messages.Take().size(), 1);  // a note cannot be commented out
      editor.ClickCell(2, 0);
      editor.Keys("Ctrl+T");
      QVERIFY(!Font(editor, 2, 0).strikeOut());
      QCOMPARE(Rows(editor), "a b c* d own note");
      QVERIFY(editor.Applied().find("\nc: 3") != std::string::npos);
      QCOMPARE(Rows(editor), "a b c d own note");
    }
  }

  void marksDefaultsThatTheReleaseHasChanged() {
    Editor editor(kMany, kManyOnServer, {}, "a: 1\r\nb: 1\r\nd: 8\r\n");
    const auto signs = [&editor] {
      QString all;
      for (int row = 0; row < 5; ++row) {
        all += Role(editor, row, 2, EditGridModel::kSign) + editor.Cell(row, 2) + ' ';
      }
      return all;
    };
    QCOMPARE(signs(), QString::fromUtf16(u"1 \u25C62 3 \u25CF4  "));
    QCOMPARE(Role(editor, 3, 2, Qt::ToolTipRole),
             "the release has changed this default; Old default: 8; New default: 4");
    editor.Keys("Ctrl+F");
    editor.Find<QComboBox>("cmbFind")->setCurrentIndex(2);
    QCOMPARE(Rows(editor), "b d");
    editor.ClickCell(3, 2);
    editor.Keys("Ctrl+R");
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
      bar->setFocus();
      editor.Keys(away < 0 ? "Down" : "Up");
      QVERIFY(box->height() < before + 20);
      for (int i = 0; i < 99; ++i) editor.Keys(away < 0 ? "Up" : "Down");
      QVERIFY(editor.Grid()->height() > 60);
      QVERIFY(box->geometry().bottom() < editor.Find<QPushButton>("Command3")->y());
      const int high = box->height();
      editor.Open();
      QCOMPARE(editor.Find<QPlainTextEdit>("Comments")->height(), high);
      editor.form.reset();
      StateFile().clear();
    }
  }

  void showsWhatTheCommentIsAbout() {
    Editor editor("// theirs\r\na: 1\r\n// same\r\nb: 2\r\n",
                  "// mine\r\na: 1\r\n// same\r\nb: 2\r\nmap: m1\r\n//map: m2\r\n");
    const auto highlight = [](const QWidget* list) {
      return list->palette().color(QPalette::Active, QPalette::Highlight);
    };
    QCOMPARE(editor.Comment(), "mine\n\nThe distribution's comment:\ntheirs");
    const QColor strong = highlight(editor.Grid());
    QVERIFY(highlight(editor.List(0)) != strong);
    editor.List(0)->setFocus();
    QCOMPARE(highlight(editor.List(0)), strong);
    QVERIFY(highlight(editor.Grid()) != strong);
    QCOMPARE(editor.Comment(), "** n/a **");
    editor.Find<QPlainTextEdit>("Comments")->setFocus();
    QCOMPARE(highlight(editor.List(0)), strong);
    editor.ClickCell(1, 1);
    QCOMPARE(highlight(editor.Grid()), strong);
    QCOMPARE(editor.Comment(), "same");
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::EditorFindTest)
#include "EditorFindTest.moc"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QTableView>

#include "app/MainFixture.h"
#include "app/OverviewModel.h"
#include "merge/StateFolder.h"

namespace quenmar {

class OverviewTest : public MainFixture {
  Q_OBJECT

  QTableView* Table() { return Get<QTableView>("tblFiles"); }
  QString Cell(int row, int column, int role = Qt::DisplayRole) {
    return Table()->model()->index(row, column).data(role).toString();
  }
  /// @return the cells of a row, joined by "|".
  QString Row(int row) {
    QStringList cells;
    for (int column = 0; column < OverviewModel::kColumns; ++column) cells << Cell(row, column);
    return cells.join('|');
  }
  QString Selected() {
    const QModelIndexList rows = Table()->selectionModel()->selectedRows();
    return rows.isEmpty() ? QString() : rows.first().data().toString();
  }
  bool IsFilled() {
    for (int row = 0; row < Table()->model()->rowCount(); ++row) {
      if (Cell(row, OverviewModel::kState).isEmpty()) return false;
    }
    return Get<QProgressBar>("prgFiles")->isHidden();
  }
  void OpenFilled(const QString& file = {}) {
    OpenOnFolders(file);
    QTRY_VERIFY(IsFilled());
  }

 private slots:
  void ARowShowsWhatItsFileNeeds() {
    const std::initializer_list<std::tuple<const char*, const char*, const char*>> files = {
        {"a.conf", "a: 1\r\nnpc: x\r\n", "a: 2\r\n"},
        {"B.conf", "a: 1\r\nb: 1\r\n//c: 1\r\n", "//a: 1\r\nd: 1\r\ne: 1\r\nnpc: own\r\n"},
        {"c.conf", "a: 1\n", "a: 1\r\na: 1\r\n"},
        {"d.conf", "a: 1\r\n", "a: 1\r\n"},
        {"e.conf", "a: 2\r\nb: 2\r\nc: 2\r\n", "a: 1\r\nb: 9\r\nc: 1\r\n"}};
    for (const auto& [name, distribution, server] : files) {
      Write(Path("dist") / name, distribution);
      Write(Path("conf") / name, server);
    }
    const ConfFile old(*scratch_ / "dist/e.conf", "a: 1\r\nb: 1\r\nc: 1\r\n");
    QVERIFY(SeenFiles(StateFolder()).Keep(*scratch_ / "conf/e.conf", old).empty());
    std::filesystem::create_directory(*scratch_ / "conf/f.conf");
    Write("dist/f.conf", "a: 1\r\n");
    OpenFilled();
    QCOMPARE(Table()->model()->rowCount(), 7);
    QCOMPARE(Row(0), "a.conf|differs||1||||+1|");
    QCOMPARE(Row(1), "B.conf|differs|2 (1)||1|2||-1|");
    QCOMPARE(Row(2), "c.conf|same|||||||line feeds, duplicates: a");
    QCOMPARE(Row(3), "d.conf|same|||||||");
    QCOMPARE(Row(4), "e.conf|differs||3|||2 (1)||");
    QVERIFY(Row(5).startsWith("f.conf|cannot be read|||||||") && !Cell(5, 8).isEmpty());
    QCOMPARE(Row(6), "NEW.CONF|new file|1 (1)||||||");
    QCOMPARE(Cell(1, OverviewModel::kNew, Qt::ToolTipRole), "[x] b\n[ ] c");
    QCOMPARE(Cell(1, OverviewModel::kNew, Qt::AccessibleDescriptionRole), "[x] b\n[ ] c");
    QCOMPARE(Cell(1, OverviewModel::kSeries, Qt::ToolTipRole), "- npc: own");
    QCOMPARE(Cell(4, OverviewModel::kDefaults, Qt::ToolTipRole),
             QString::fromUtf16(u"\u25CF a: 1 -> 2\n\u25C6 b: 1 -> 2\n\u25CF c: 1 -> 2"));
    // What needs nothing is grey.
    const auto* const model = Table()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
      const QVariant colour = model->index(row, 0).data(Qt::ForegroundRole);
      QCOMPARE(colour.isValid(), Cell(row, 0) == "d.conf");
      const QVariant meaning = model->index(row, 0).data(Qt::AccessibleDescriptionRole);
      QCOMPARE(meaning.toString(), colour.isValid() ? "nothing to do" : "");
    }
  }

  void TheListAndTheRowsSelectEachOther() {
    OpenFilled("NEW.CONF");
    QCOMPARE(Selected(), "NEW.CONF");
    Files()->setCurrentText("a.conf");
    QCOMPARE(Selected(), "a.conf");
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {},
                      Table()->visualRect(Table()->model()->index(1, 2)).center());
    QCOMPARE(Files()->currentText(), "NEW.CONF");
    QTest::keyClick(Table(), Qt::Key_Up);
    QCOMPARE(Files()->currentText(), "a.conf");
    for (const auto& [key, file] :
         {std::pair(Qt::Key_End, "NEW.CONF"), {Qt::Key_Home, "a.conf"}, {Qt::Key_N, "NEW.CONF"}}) {
      QTest::keyClick(Table(), key);
      QCOMPARE(Selected(), file);
    }
    Files()->setCurrentIndex(-1);
    QCOMPARE(Selected(), QString());
    QTest::keyClick(Table(), Qt::Key_Down);
    QCOMPARE(Selected(), "a.conf");
    QCOMPARE(Files()->currentText(), "a.conf");
  }

  void KeysDoubleClickAndContextMenuOpenTheFile() {
    OpenFilled("a.conf");
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    Table()->setFocus();
    QCOMPARE(Table()->contextMenuPolicy(), Qt::ActionsContextMenu);
    const QPoint place = Table()->visualRect(Table()->model()->index(0, 1)).center();
    const auto doubleClick = [&] {
      QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {}, place);
      QTest::mouseDClick(Table()->viewport(), Qt::LeftButton, {}, place);
    };
    const std::initializer_list<std::pair<const char*, std::function<void()>>> ways = {
        {"Check Changes - a.conf", [&] { PressKeys(*window_, "Return"); }},
        {"Check Changes - a.conf", [&] { PressKeys(*window_, "Enter"); }},
        {"Check Changes - a.conf", doubleClick},
        {"Check Changes - a.conf", [&] { Table()->actions().at(0)->trigger(); }},
        {"Editing a.conf", [&] { PressKeys(*window_, "Ctrl+Return"); }},
        {"Editing a.conf", [&] { Table()->actions().at(1)->trigger(); }}};
    for (const auto& [title, way] : ways) {
      const QString opened = DoAndClose(way);
      QVERIFY2(opened.startsWith(title), qPrintable(opened + ", not " + title));
      QTRY_VERIFY(Table()->hasFocus());
    }
    for (const char* const key : {"Check Changes: Enter", "Edit: Ctrl+Enter"}) {
      QVERIFY(Table()->toolTip().contains(key));
    }
  }

  void ColumnsSortByNumber() {
    for (size_t count = 8; count <= 12; ++count) {
      std::string settings;
      for (size_t i = 0; i < count; ++i) settings += "s" + std::string(i, 'x') + ": 1\r\n";
      Write("dist/s" + std::to_string(count) + ".conf", settings);
    }
    Write("dist/s8.conf", Read("dist/s8.conf") + "npc: new\r\n");
    Write("conf/s8.conf", "npc: own\r\n");
    OpenFilled();
    Table()->sortByColumn(OverviewModel::kSeries, Qt::DescendingOrder);
    QCOMPARE(Cell(0, 0) + ' ' + Cell(1, 0), "s8.conf a.conf");
    Table()->sortByColumn(OverviewModel::kNew, Qt::DescendingOrder);
    QStringList counts;
    for (int row = 0; row < 6; ++row) counts << Cell(row, OverviewModel::kNew).section(' ', 0, 0);
    QCOMPARE(counts.join(' '), "12 11 10 9 8 1");
  }

  void ChangesOnTheDiskAndInAWindowAreFollowed() {
    OpenFilled("a.conf");
    const QAbstractItemModelTester tester(Table()->model());
    const auto changed = [this] { return Cell(0, OverviewModel::kChanged); };
    QCOMPARE(changed(), "1");
    Write("conf/a.conf", "a: 1\r\n//npc: x\r\n");  // in place
    QTRY_COMPARE(Row(0), "a.conf|same|||||||");
    Write("conf/other", "a: 10\r\n");
    std::filesystem::rename(*scratch_ / "conf/other", *scratch_ / "conf/a.conf");
    QTRY_COMPARE(changed(), "1");
    Write("conf/a.conf", "a: 1\r\n");  // the new file is watched, too
    QTRY_COMPARE(changed(), QString());
    Write("dist/b.conf", "b: 1\r\n");
    QTRY_COMPARE(Table()->model()->rowCount(), 3);
    QCOMPARE(Row(0), "a.conf|differs||||||+1|");  // known rows keep their reports
    QCOMPARE(Selected(), "a.conf");

    Write("next/a.conf", "a: 10\r\n");
    std::filesystem::rename(*scratch_ / "conf", *scratch_ / "last");
    std::filesystem::rename(*scratch_ / "next", *scratch_ / "conf");
    QTRY_COMPARE(changed(), "1");
    Write("conf/a.conf", "a: 1\r\n");  // the new folder is watched, too
    QTRY_COMPARE(changed(), QString());

    // Even where time and size stay the same.
    const auto time = std::filesystem::last_write_time(*scratch_ / "conf/a.conf");
    PressAndClose("Command3", [&](QWidget*) {
      Write("conf/a.conf", "a: 2\r\n");
      std::filesystem::last_write_time(*scratch_ / "conf/a.conf", time);
    });
    QTRY_COMPARE(changed(), "1");
  }

  void ReportsFollowTheLayoutAndTheSorting() {
    Write("dist/a.conf", "a: 1\r\nc: 1\r\nb: 1\r\n");
    Write("conf/a.conf", "// \xE9\r\na: \xC3\xA9\r\n");  // without the comment it looks like UTF-8
    OpenFilled();
    const auto remarks = [this] { return Cell(0, OverviewModel::kRemarks); };
    QVERIFY(!remarks().isEmpty());
    Get<QComboBox>("cmbLayout")->setCurrentIndex(static_cast<int>(Layout::kServer));
    QTRY_COMPARE(remarks(), QString());
    Get<QComboBox>("cmbLayout")->setCurrentIndex(static_cast<int>(Layout::kSettings));
    Get<QCheckBox>("Check1")->click();
    QTRY_COMPARE(Cell(0, OverviewModel::kNew, Qt::ToolTipRole), "[x] b\n[x] c");
  }

  void AnEmptyTableSaysWhy() {
    Open();
    const auto* const reason = Get<QLabel>("lblNoFiles");
    QVERIFY(reason->isVisible());
    QCOMPARE(reason->text(), "Choose both folders to see what their files need.");
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    window_->setPalette(dark);
    QVERIFY(reason->palette().color(QPalette::WindowText).lightness() > 128);
    From()->SetFolder(Folder("dist"));
    To()->SetFolder(Folder("empty"));
    QVERIFY(messages_.Take().last().endsWith(reason->text()));
    QCOMPARE(Table()->accessibleDescription(), reason->text());
    To()->SetFolder(Folder("conf"));
    QVERIFY(!reason->isVisible() && Table()->accessibleDescription().isEmpty());
    QTRY_VERIFY(IsFilled());
    QCOMPARE(Table()->model()->rowCount(), 2);
  }

  void WidthsAndOrderOfTheColumnsAreRemembered() {
    OpenFilled();
    auto* header = Table()->horizontalHeader();
    header->resizeSection(OverviewModel::kNew, 123);
    header->moveSection(OverviewModel::kSeries, 0);
    Table()->sortByColumn(OverviewModel::kState, Qt::DescendingOrder);
    window_->hide();
    OpenFilled();
    header = Table()->horizontalHeader();
    QCOMPARE(header->sectionSize(OverviewModel::kNew), 123);
    QCOMPARE(header->visualIndex(OverviewModel::kSeries), 0);
    QCOMPARE(Cell(0, 0), "NEW.CONF");
  }

  void ManyFilesAreReportedOnWhileTheWindowAnswers() {
    constexpr int kFiles = 100;
    for (int file = 0; file < kFiles; ++file) {
      Write("dist/many" + std::to_string(file) + ".conf", "a: 1\r\n");
    }
    OpenOnFolders();
    int turns = 0;
    bool progress = false;
    for (; !IsFilled() && turns < 10 * kFiles; ++turns) {
      QCoreApplication::processEvents(QEventLoop::AllEvents);
      progress = progress || Get<QProgressBar>("prgFiles")->isVisible();
    }
    QVERIFY(IsFilled() && progress && turns >= kFiles);
    OpenOnFolders();
    while (!Get<QProgressBar>("prgFiles")->isVisible()) QCoreApplication::processEvents();
    To()->SetFolder(Folder("empty"));
    QVERIFY(Get<QProgressBar>("prgFiles")->isHidden());
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::OverviewTest)
#include "OverviewTest.moc"
#include "moc_MainFixture.cpp"

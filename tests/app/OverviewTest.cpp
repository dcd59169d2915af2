#include <QAbstractItemModelTester>
#include <QAction>
#include <QElapsedTimer>
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
  void ARowTellsWhatItsFileNeeds() {
    const std::initializer_list<std::tuple<const char*, const char*, const char*>> files = {
        {"a.conf", "a: 1\r\nnpc: x\r\n", "a: 2\r\n"},
        {"B.conf", "a: 1\r\nb: 1\r\n//c: 1\r\n", "//a: 1\r\nd: 1\r\ne: 1\r\nnpc: own\r\n"},
        {"c.conf", "a: 1\n", "a: 1\r\na: 1\r\n"},
        {"d.conf", "a: 1\r\n", "a: 1\r\n"},
        {"e.conf", "a: 2\r\nb: 2\r\nc: 2\r\n", "a: 1\r\nb: 9\r\nc: 1\r\n"}};
    for (const auto& [name, distribution, server] : files) {
      WriteFile(*scratch_ / "dist" / name, distribution);
      WriteFile(*scratch_ / "conf" / name, server);
    }
    const ConfFile old(*scratch_ / "dist/e.conf", "a: 1\r\nb: 1\r\nc: 1\r\n");
    QVERIFY(SeenFiles(StateFolder()).Keep(*scratch_ / "conf/e.conf", old).empty());
    std::filesystem::create_directory(*scratch_ / "conf/f.conf");
    WriteFile(*scratch_ / "dist/f.conf", "a: 1\r\n");
    OpenFilled();
    QCOMPARE(Table()->model()->rowCount(), 7);
    QCOMPARE(Row(0), QString("a.conf|differs||1||||+1|"));
    QCOMPARE(Row(1), QString("B.conf|differs|2 (1)||1|2||-1|"));
    QCOMPARE(Row(2), QString("c.conf|same|||||||line feeds, duplicates: a"));
    QCOMPARE(Row(3), QString("d.conf|same|||||||"));
    QCOMPARE(Row(4), QString("e.conf|differs||3|||2 (1)||"));
    QVERIFY(Row(5).startsWith("f.conf|cannot be read|||||||") && !Cell(5, 8).isEmpty());
    QCOMPARE(Row(6), QString("NEW.CONF|new file|1 (1)||||||"));
    QCOMPARE(Cell(1, OverviewModel::kNew, Qt::ToolTipRole), QString("[x] b\n[ ] c"));
    QCOMPARE(Cell(1, OverviewModel::kSeries, Qt::ToolTipRole), QString("- npc: own"));
    QCOMPARE(Cell(4, OverviewModel::kDefaults, Qt::ToolTipRole),
             QString::fromUtf16(u"\u25CF a: 1 -> 2\n\u25C6 b: 1 -> 2\n\u25CF c: 1 -> 2"));
    // What needs nothing is grey.
    const auto* const model = Table()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
      const QVariant colour = model->index(row, 0).data(Qt::ForegroundRole);
      QCOMPARE(colour.isValid(), Cell(row, 0) == "d.conf");
    }
  }

  void TheListAndTheRowsSelectEachOther() {
    OpenFilled("NEW.CONF");
    QCOMPARE(Selected(), QString("NEW.CONF"));
    Files()->setCurrentText("a.conf");
    QCOMPARE(Selected(), QString("a.conf"));
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {},
                      Table()->visualRect(Table()->model()->index(1, 2)).center());
    QCOMPARE(Files()->currentText(), QString("NEW.CONF"));
    QTest::keyClick(Table(), Qt::Key_Up);
    QCOMPARE(Files()->currentText(), QString("a.conf"));
    Files()->setCurrentIndex(-1);
    QCOMPARE(Selected(), QString());
    QTest::keyClick(Table(), Qt::Key_Down);
    QCOMPARE(Selected(), QString("a.conf"));
    QCOMPARE(Files()->currentText(), QString("a.conf"));
  }

  void KeysDoubleClickAndContextMenuOpenTheFile() {
    OpenFilled("a.conf");
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    Table()->setFocus();
    QCOMPARE(Table()->contextMenuPolicy(), Qt::ActionsContextMenu);
    const QPoint place = Table()->visualRect(Table()->model()->index(0, 1)).center();
    const QString check = "Check Changes - a.conf";
    const QString edit = "Editing a.conf";
    const std::initializer_list<std::pair<QString, std::function<void()>>> ways = {
        {check, [&] { QTest::keyClick(Table(), Qt::Key_Return); }},
        {check, [&] { QTest::keyClick(Table(), Qt::Key_Enter); }},
        {check,
         [&] {
           QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {}, place);
           QTest::mouseDClick(Table()->viewport(), Qt::LeftButton, {}, place);
         }},
        {check, [&] { Table()->actions().at(0)->trigger(); }},
        {edit, [&] { QTest::keyClick(Table(), Qt::Key_Return, Qt::ControlModifier); }},
        {edit, [&] { Table()->actions().at(1)->trigger(); }}};
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
      WriteFile(*scratch_ / "dist" / ("s" + std::to_string(count) + ".conf"), settings);
    }
    OpenFilled();
    Table()->sortByColumn(OverviewModel::kNew, Qt::DescendingOrder);
    QStringList counts;
    for (int row = 0; row < 6; ++row) counts << Cell(row, OverviewModel::kNew).section(' ', 0, 0);
    QCOMPARE(counts.join(' '), QString("12 11 10 9 8 1"));
  }

  void ChangesOnTheDiskAndInAWindowAreFollowed() {
    OpenFilled("a.conf");
    const auto changed = [this] { return Cell(0, OverviewModel::kChanged); };
    QCOMPARE(changed(), QString("1"));
    WriteFile(*scratch_ / "conf/a.conf", "a: 1\r\n//npc: x\r\n");  // in place
    QTRY_COMPARE(Row(0), QString("a.conf|same|||||||"));
    WriteFile(*scratch_ / "conf/other", "a: 10\r\n");
    std::filesystem::rename(*scratch_ / "conf/other", *scratch_ / "conf/a.conf");
    QTRY_COMPARE(changed(), QString("1"));
    WriteFile(*scratch_ / "conf/a.conf", "a: 1\r\n");  // the new file is watched, too
    QTRY_COMPARE(changed(), QString());
    WriteFile(*scratch_ / "dist/b.conf", "b: 1\r\n");
    QTRY_COMPARE(Table()->model()->rowCount(), 3);
    QCOMPARE(Selected(), QString("a.conf"));

    // Even where time and size tell nothing.
    const auto time = std::filesystem::last_write_time(*scratch_ / "conf/a.conf");
    PressAndClose("Command3", [&](QWidget*) {
      WriteFile(*scratch_ / "conf/a.conf", "a: 2\r\n");
      std::filesystem::last_write_time(*scratch_ / "conf/a.conf", time);
    });
    QTRY_COMPARE(changed(), QString("1"));
  }

  void AnEmptyTableSaysWhy() {
    Open();
    const auto* const reason = Get<QLabel>("lblNoFiles");
    QVERIFY(reason->isVisible());
    QCOMPARE(reason->text(), QString("Choose both folders to see what their files need."));
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
    QCOMPARE(Cell(0, 0), QString("NEW.CONF"));
  }

  void TheModelKeepsTheToolkitsRules() {
    OverviewModel model(language_, nullptr);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.List({u"a.conf", u"b.conf"});
    FileReport report;
    report.file = u"b.conf";
    model.Take(report);
    model.List({u"b.conf", u"c.conf"});
    QCOMPARE(model.index(0, OverviewModel::kState).data().toString(), QString("same"));
    QVERIFY(!model.index(1, OverviewModel::kState).data().isValid());
    report.file = u"gone.conf";
    model.Take(report);
    QCOMPARE(model.RowOf(report.file), -1);
  }

  void ManyFilesAreReportedOnWhileTheWindowAnswers() {
    constexpr int kFiles = 100;
    for (int file = 0; file < kFiles; ++file) {
      std::string distribution;
      std::string server;
      for (int i = 0; i < 300; ++i) {
        const std::string name = "setting_" + std::string(1, static_cast<char>('a' + i % 26)) +
                                 "_" + std::to_string(i) + ": ";
        distribution += "// What it does\r\n" + name + "1\r\n";
        if (i % 20 != 0) server += name + std::to_string(i % 3) + "\r\n";
      }
      const std::string name = "many" + std::to_string(file) + ".conf";
      WriteFile(*scratch_ / "dist" / name, distribution);
      WriteFile(*scratch_ / "conf" / name, server);
    }
    QElapsedTimer time;
    time.start();
    OpenOnFolders();
    int turns = 0;
    bool progress = false;
    while (!IsFilled() && turns < 10 * kFiles) {
      QCoreApplication::processEvents(QEventLoop::AllEvents);
      progress = progress || Get<QProgressBar>("prgFiles")->isVisible();
      ++turns;
    }
    qInfo() << kFiles << "files of 300 settings:" << time.elapsed() << "ms";
    QVERIFY(IsFilled() && progress && turns >= kFiles);
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::OverviewTest)
#include "OverviewTest.moc"

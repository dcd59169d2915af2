#include <QAbstractItemModelTester>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QMenu>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>
#include <QTimer>
#include <functional>

#include "editor/OpenEditor.h"
#include "widgets/PrivateState.h"
#include "widgets/SeriesTabs.h"

namespace quenmar {
namespace {

/// Refuses what begins with "no".
struct Events : xEditGridEvents {
  void SureChange(bool& cancel, String& newValue, int&, int&) override {
    cancel = newValue.starts_with(u"no");
  }
  void Scroll(int&, int&) override { ++scrolls; }
  int scrolls = 0;
};

}  // namespace

class EditorTest : public QObject {
  Q_OBJECT

  PrivateState state_;

 private slots:
  void showsBothFiles() {
    Editor editor;
    const QList<QStringList> rows{
        {"a", "5", "1", "Mandatory"}, {"b", "6", "2", "Optional"}, {"own", "7", "", "Optional"}};
    QCOMPARE(editor.Grid()->model()->rowCount(), 3);
    QCOMPARE(editor.Grid()->model()->columnCount(), 4);
    for (int row = 0; row < 3; ++row) {
      for (int col = 0; col < 4; ++col) QCOMPARE(editor.Cell(row, col), rows[row][col]);
    }
    QCOMPARE(editor.form->windowTitle(),
             "Editing a.conf - " + ToQString(PathText(editor.folder / "conf")) + "[*]");
    QCOMPARE(editor.Find<QGroupBox>("Frame1")->title(), QString("Editing: a.conf"));
    QCOMPARE(editor.Find<QPushButton>("Command3")->text(), QString("Apply"));
    QCOMPARE(editor.Comment(), QString("About a & <b>"));
    QVERIFY(editor.Grid()->columnWidth(0) > editor.Grid()->columnWidth(2));
    QVERIFY(editor.Grid()->hasFocus());
    QVERIFY(!editor.Changed());
    QCOMPARE(editor.messages.Take(), QStringList());
  }

  void commitsEveryChangeAtOnce() {
    Editor editor;
    const QAbstractItemModelTester tester(editor.Grid()->model());
    editor.ClickCell(0, 1);
    QVERIFY(editor.T()->hasFocus());
    QCOMPARE(editor.T()->geometry(), editor.Grid()->visualRect(editor.Grid()->currentIndex()));
    editor.T()->selectAll();
    QGuiApplication::clipboard()->setText("5");
    QTest::keySequence(editor.T(), QKeySequence::Paste);
    QVERIFY(!editor.Changed());  // the same text
    QTest::keyClick(editor.T(), Qt::Key_Home);
    QTest::keyClicks(editor.T(), "xy");
    QCOMPARE(editor.Cell(0, 1), QString("xy5"));
    QCOMPARE(editor.Settings(), std::string("a=xy5 b=6 own=7"));
    QCOMPARE(editor.T()->cursorPosition(), 2);
    for (int i = 0; i < 2; ++i) QTest::keyClick(editor.T(), Qt::Key_Backspace);
    QCOMPARE(editor.Cell(0, 1), QString("5"));
    QVERIFY(editor.Changed());
  }

  void editsTheRowThatIsShown() {
    // Two settings of one name, and a value longer than lines of text commonly are.
    Editor editor("a: 1\r\n", "a: 1\r\n//a: 2\r\nlong: " + std::string(40000, 'x') + "\r\n");
    editor.ClickCell(1, 1);
    QTest::keyClicks(editor.T(), "9");
    QCOMPARE(editor.T()->accessibleName(), QString("a, Actual Value"));
    QTest::keyClick(editor.T(), Qt::Key_Down);
    QCOMPARE(editor.T()->accessibleName(), QString("long, Actual Value"));
    QTest::keyClick(editor.T(), Qt::Key_Backspace);
    editor.messages.Answer({Button::kYes});
    editor.Press("Command3");
    QCOMPARE(ReadFile(editor.folder / "conf" / "a.conf"),
             "a: 1\r\na: 29\r\nlong: " + std::string(39999, 'x') + "\r\n");
  }

  void movesTheEditByArrows() {
    Editor editor;
    QTest::keyClick(editor.Grid(), Qt::Key_Right);
    QTest::keyClick(editor.Grid(), Qt::Key_Return);
    QVERIFY(editor.T()->hasFocus());
    QTest::keyClick(editor.T(), Qt::Key_Down);
    QCOMPARE(editor.Grid()->currentIndex().row(), 1);
    QCOMPARE(editor.T()->text(), QString("6"));
    QCOMPARE(editor.T()->geometry(), editor.Grid()->visualRect(editor.Grid()->currentIndex()));
    QTest::keyClick(editor.T(), Qt::Key_Up);
    QCOMPARE(editor.T()->text(), QString("5"));
    QTest::keyClick(editor.T(), Qt::Key_Enter);
    QVERIFY(editor.T()->isHidden() && editor.Grid()->hasFocus());
    QTest::keyClick(editor.Grid(), Qt::Key_Return);
    QTest::keyClick(editor.T(), Qt::Key_Tab);
    QVERIFY(editor.T()->isHidden());
    QVERIFY(editor.Find<QPlainTextEdit>("Comments")->hasFocus());
    editor.ClickCell(0, 2);
    QVERIFY(editor.T()->isHidden());  // read only
    QVERIFY(!editor.Changed());
  }

  void showsOneCommentForAllRowsOfAName() {
    Editor editor("", "// One\xA0\r\n// two\r\na: 1\r\n//a: 2\r\n\r\nb: 3\r\n");
    auto* const comments = editor.Find<QPlainTextEdit>("Comments");
    comments->selectAll();
    editor.ClickCell(1, 0);
    QVERIFY(editor.Comment().endsWith("\ntwo"));
    QVERIFY(comments->textCursor().hasSelection());  // the same text again
    editor.ClickCell(2, 0);
    QCOMPARE(editor.Comment(), QString("** n/a **"));
  }

  void takesBackWhatWasTyped() {
    Editor editor;
    editor.ClickCell(0, 1);
    QTest::keyClicks(editor.T(), "x");
    QTest::keyClick(editor.T(), Qt::Key_Down);
    QTest::keyClicks(editor.T(), "yz");
    QTest::keyClick(editor.T(), Qt::Key_Escape);
    QCOMPARE(editor.Settings(), std::string("a=5x b=6 own=7"));  // of this edit only
    QCOMPARE(editor.T()->text(), QString("6"));
    QVERIFY(editor.T()->hasFocus() && editor.form->isVisible());
    QTest::keySequence(editor.T(), QKeySequence::Undo);
    QCOMPARE(editor.Settings(), std::string("a=5x b=6yz own=7"));
    editor.messages.Answer({Button::kYes});
    QTest::keyClick(editor.Grid(), Qt::Key_Escape);
    QVERIFY(!editor.form->isVisible());

    editor.Open();
    editor.ClickCell(0, 1);
    QTest::keyClick(editor.T(), Qt::Key_Escape);
    QVERIFY(!editor.form->isVisible());
  }

  void lettersReplaceAValue() {
    Editor editor;
    QTest::keyClick(editor.Grid(), Qt::Key_O);
    QCOMPARE(editor.Grid()->currentIndex(), editor.Grid()->model()->index(2, 0));  // searched
    QTest::keyClick(editor.Grid(), Qt::Key_Right);
    QInputMethodEvent composing("e", {});
    QInputMethodEvent composed;
    composed.setCommitString(QString(QChar(0xE9)));
    for (const Qt::KeyboardModifier held :
         {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
      QTest::sendKeyEvent(QTest::Click, editor.Grid(), Qt::Key_X, "x", held);
    }
    QApplication::sendEvent(editor.Grid(), &composing);
    QVERIFY(editor.T()->isHidden());
    QVERIFY(editor.Grid()->testAttribute(Qt::WA_InputMethodEnabled));
    const std::pair<std::function<void()>, QString> ways[] = {
        {[&] { QTest::keyClicks(editor.Grid(), "X"); }, "X"},
        {[&] { QTest::keyClick(editor.Grid(), Qt::Key_Space); }, " "},
        {[&] { QApplication::sendEvent(editor.Grid(), &composed); }, QChar(0xE9)}};
    for (const auto& [type, text] : ways) {
      type();
      QVERIFY(editor.T()->hasFocus());
      QCOMPARE(editor.Cell(2, 1), text);
      QTest::keyClicks(editor.T(), "b");
      QCOMPARE(editor.Cell(2, 1), text + "b");
      QTest::keyClick(editor.T(), Qt::Key_Escape);
      QCOMPARE(editor.Cell(2, 1), QString("7"));
      QTest::keyClick(editor.T(), Qt::Key_Return);
    }
  }

  void marksWhatWillBeReadBackOtherwise() {
    Editor editor;
    for (const QColor base : {Qt::white, Qt::black}) {
      QPalette palette = editor.form->palette();
      palette.setColor(QPalette::Base, base);
      editor.form->setPalette(palette);
      editor.ClickCell(0, 1);
      QTest::keyClicks(editor.T(), "//x");
      QCOMPARE(editor.T()->toolTip(), QString("This will be read back as: 5"));
      QCOMPARE(editor.T()->accessibleDescription(), editor.T()->toolTip());
      const QColor frame = editor.T()->grab().toImage().pixelColor(0, 0);
      QVERIFY(frame.red() > frame.green() + 80 && frame.red() > frame.blue() + 80);
      QTest::keyClick(editor.T(), Qt::Key_Return);
      const QModelIndex cell = editor.Grid()->currentIndex();
      QCOMPARE(cell.data(Qt::ToolTipRole).toString(), editor.T()->toolTip());
      editor.ClickCell(1, 1);
      QCOMPARE(editor.T()->toolTip(), QString());
      const QPoint corner = editor.Grid()->visualRect(cell).topLeft();
      QCOMPARE(editor.Grid()->viewport()->grab().toImage().pixelColor(corner), frame);
      editor.ClickCell(0, 1);
      for (int i = 0; i < 3; ++i) QTest::keyClick(editor.T(), Qt::Key_Backspace);
      QCOMPARE(editor.T()->toolTip(), QString());
      QVERIFY(cell.data(Qt::ToolTipRole).toString().isEmpty());
    }
  }

  void asksBeforeItApplies() {
    Editor editor;
    const Path file = editor.folder / "conf" / "a.conf";
    editor.ClickCell(1, 1);
    QTest::keyClicks(editor.T(), "0");
    editor.messages.Answer({Button::kNo, Button::kYes});
    editor.Press("Command3");
    QCOMPARE(ReadFile(file), std::string(kServer));
    QCOMPARE(editor.messages.Details(), QString("- b: 6\r\n+ b: 60\r\n+ //map: m3\r\n- // (1)\r\n"
                                                "lines are reformatted\r\n"));
    editor.Press("Command3");
    QVERIFY(ReadFile(file).starts_with("a: 5\r\nb: 60\r\n"));
    const QString question = "[36] Apply Changes?\r\n\r\nComment lines that will be lost: 1";
    QCOMPARE(editor.messages.Take(), QStringList({question, question, "[64] Saved!"}));
    editor.Press("Command4");
    QVERIFY(!editor.form->isVisible());
  }

  void asksBeforeItIgnoresChanges() {
    Editor editor;
    auto* const button = editor.Find<QPushButton>("Command4");
    editor.ClickCell(0, 1);
    QTest::keyClicks(editor.T(), "0");
    QTest::keyClick(editor.T(), Qt::Key_Return);
    const std::function<void()> ways[] = {[&] { QTest::keyClick(editor.Grid(), Qt::Key_Escape); },
                                          [&] { editor.form->close(); },
                                          [&] {
                                            button->setFocus();
                                            QTest::keyClick(button, Qt::Key_Return);
                                          }};
    for (const auto& close : ways) {
      editor.messages.Answer({Button::kNo});
      close();
      QVERIFY(editor.form->isVisible());
    }
    editor.messages.Answer({Button::kYes});
    editor.Press("Command4");
    QVERIFY(!editor.form->isVisible());
    QCOMPARE(editor.messages.Take(), QStringList(4, "[292] Ignore Changes?"));
    QCOMPARE(ReadFile(editor.folder / "conf" / "a.conf"), std::string(kServer));
  }

  void showsTenKindsOfSeries() {
    Options options;
    std::string text;
    for (int i = 0; i < 10; ++i) {
      options.series += u"{k" + ToText(i) + u"}";
      text += "k" + std::to_string(i) + ": v" + std::to_string(i) + "\r\n";
    }
    Editor editor(text, "", options);
    auto* const tabs = editor.Find<SeriesTabs>("TSeries");
    QVERIFY(tabs->isTabVisible(9));
    QCOMPARE(tabs->tabText(9), QString("k9(1)"));
    tabs->setCurrentIndex(9);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Return}) QTest::keyClick(editor.List(9), key);
    QVERIFY(!editor.Changed());  // no button is pressed either
    QTest::keyClick(editor.List(9), Qt::Key_Space);
    QVERIFY(editor.merge->Series().Selected(9, 0) && editor.Changed());
    QCOMPARE(editor.Comment(), QString("** n/a **"));
  }

  void sharesOutItsRoom() {
    Editor settings("a: 1\r\n", "a: 1\r\n");
    QVERIFY(!settings.Find<SeriesTabs>("TSeries")->isVisible());
    Editor series("map: m\r\n", "");
    QVERIFY(series.Find<SeriesTabs>("TSeries")->isVisible());
    const int frame = series.Find<QGroupBox>("Frame1")->height();
    QVERIFY(qAbs(series.Grid()->height() - frame / 8) <= 1);
    QCOMPARE(series.Comment(), QString("** n/a **"));
    series.form->resize(1, 1);
    QCOMPARE(series.form->size(), QSize(334, 360));
    // A large font takes the room from the comments, not from the series.
    Editor both;
    QFont font = both.form->font();
    font.setPointSize(20);
    both.form->setFont(font);
    both.form->resize(334, 361);
    const auto* const tabs = both.Find<SeriesTabs>("TSeries");
    QVERIFY(tabs->height() > tabs->tabBar()->height());
    // However large it is, the window does not outgrow the screen.
    Editor huge;
    font.setPointSize(60);
    huge.form->setFont(font);
    huge.form->resize(500, 500);
    QVERIFY(huge.form->frameGeometry().height() <= huge.form->screen()->availableSize().height());
    for (const Editor* const editor : {&settings, &series, &both, &huge}) {
      for (const char* const name : {"Command3", "Command4"}) {
        auto* const button = editor->Find<QPushButton>(name);
        QVERIFY(editor->form->rect().contains(button->geometry()));
      }
    }
  }

  void undoesAndRedoesByKey() {
    Editor editor;
    const auto press = [&editor](const QKeySequence& key) {
      QTest::keySequence(editor.form->focusWidget(), key);
    };
    const auto* const undo = editor.Find<QAction>("Undo");
    const auto* const redo = editor.Find<QAction>("Redo");
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    editor.ClickCell(1, 1);
    QTest::keyClicks(editor.T(), "xy");
    QTest::keyClick(editor.T(), Qt::Key_Down);
    QTest::keyClicks(editor.T(), "z");
    QTest::keyClick(editor.T(), Qt::Key_Up);
    QTest::keyClick(editor.T(), Qt::Key_Down);
    QTest::keyClicks(editor.T(), "w");  // another edit of the same value
    for (const char* const left : {"a=5 b=6xy own=7z", "a=5 b=6xy own=7", "a=5 b=6 own=7"}) {
      QVERIFY(editor.Changed() && undo->isEnabled());
      press(QKeySequence::Undo);
      QCOMPARE(editor.Settings(), std::string(left));
      QVERIFY(editor.T()->isHidden() && editor.Grid()->hasFocus());
      QCOMPARE(editor.Grid()->currentIndex(), editor.Grid()->model()->index(2, 1));
    }
    QVERIFY(!editor.Changed() && !undo->isEnabled());
    QCOMPARE(editor.Cell(1, 1), QString("6"));
    press(QKeySequence("Ctrl+Y"));
    QCOMPARE(editor.Cell(1, 1), QString("6xy"));
    editor.ClickCell(0, 1);
    press(QKeySequence("Ctrl+Shift+Z"));
    QCOMPARE(editor.Cell(2, 1), QString("7z"));
    QCOMPARE(editor.Grid()->currentIndex().row(), 0);

    QListWidget* const maps = editor.List(0);
    maps->setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Space}) QTest::keyClick(maps, key);
    for (const bool on : {false, true, false}) {
      press(on ? QKeySequence::Redo : QKeySequence::Undo);
      QCOMPARE(maps->item(1)->checkState(), on ? Qt::Checked : Qt::Unchecked);
      QVERIFY(maps->hasFocus() && maps->currentRow() == 1);
    }
    editor.Find<QPlainTextEdit>("Comments")->setFocus();
    press(QKeySequence::Undo);
    QCOMPARE(editor.Cell(2, 1), QString("7"));
  }

  void copiesAndPastes() {
    Editor editor;
    QClipboard* const clipboard = QGuiApplication::clipboard();
    editor.ClickCell(0, 1);
    clipboard->setText("one\r\ntwo");
    QTest::keySequence(editor.T(), QKeySequence::Paste);
    QCOMPARE(editor.Cell(0, 1), QString("5one two"));
    QTest::keySequence(editor.T(), QKeySequence::Copy);
    QCOMPARE(clipboard->text(), QString("5one two"));
    editor.T()->setSelection(1, 3);
    QTest::keySequence(editor.T(), QKeySequence::Copy);
    QCOMPARE(clipboard->text(), QString("one"));
    auto* const comments = editor.Find<QPlainTextEdit>("Comments");
    comments->setFocus();
    QTest::keySequence(comments, QKeySequence::Copy);
    QCOMPARE(clipboard->text(), QString("About a & <b>"));
  }

  void offersCopyInEveryMenu() {
    Editor editor;
    QStringList offered;
    QString chosen = "Copy";
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&offered, &chosen] {
      auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (menu == nullptr) return;
      for (QAction* const action : menu->actions()) {
        offered << action->objectName();
        if (action->objectName() == chosen) action->trigger();
      }
      menu->close();
    });
    poll.start(0);
    const auto ask = [&offered](QWidget* asked, QContextMenuEvent::Reason reason) {
      offered.clear();
      QContextMenuEvent event(reason, QPoint(2, 2), QPoint(2, 2));
      QApplication::sendEvent(asked, &event);
    };
    for (const bool byKey : {false, true}) {
      QGuiApplication::clipboard()->clear();
      ask(byKey ? editor.Grid() : editor.Grid()->viewport(),
          byKey ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse);
      for (const char* const own : {"Copy", "SetToOriginal", "Switch", "Find"}) {
        QCOMPARE(offered.count(own), 1);
      }
      QCOMPARE(QGuiApplication::clipboard()->text(), QString("a"));
    }
    editor.ClickCell(0, 1);
    QTest::keyClicks(editor.T(), "x");
    QTest::keyClick(editor.T(), Qt::Key_Down);
    chosen = "Undo";
    ask(editor.T(), QContextMenuEvent::Keyboard);
    for (const char* const own : {"Undo", "Redo", "Copy", "Paste"}) QCOMPARE(offered.count(own), 1);
    QVERIFY(offered.size() > 6);  // to cut, too
    QCOMPARE(editor.Cell(0, 1), QString("5"));
    QCOMPARE(editor.form->focusWidget(), editor.Grid());
  }

  void choosesAndGrowsAndRefuses() {
    Events events;
    EditGridView view(events, nullptr);
    const QAbstractItemModelTester tester(view.model());
    xEditGrid& grid = view.Grid();
    grid.SetColType(1, u"1");
    for (const char16_t* label : {u"yes", u"no", u"maybe"}) grid.AddListContent(1, label, label);
    grid.SetAutoCrecimiento(1);
    view.Reload();
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(view.model()->rowCount(), 2);
    auto* const list = view.findChild<QComboBox*>("C");
    QVERIFY(list->hasFocus());
    QCOMPARE(list->geometry(), view.visualRect(view.currentIndex()));
    QCOMPARE(list->currentIndex(), -1);
    const auto shown = [&view] { return view.currentIndex().data().toString(); };
    // "no" is refused.
    for (const auto& [key, label] : {std::pair(Qt::Key_Down, "yes"), std::pair(Qt::Key_Down, "yes"),
                                     std::pair(Qt::Key_End, "maybe")}) {
      QTest::keyClick(list, key);
      QCOMPARE(shown(), QString(label));
      QCOMPARE(list->currentText(), QString(label));
    }
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(list->isHidden() && view.hasFocus());

    QTest::keyClick(&view, Qt::Key_Left);
    QTest::keyClick(&view, Qt::Key_Return);
    auto* const text = view.findChild<QLineEdit*>("T");
    QTest::keyClicks(text, "no");
    QCOMPARE(text->text(), QString("n"));
    QCOMPARE(shown(), QString("n"));
  }

  void loadsManyRowsAtOnce() {
    std::string file;
    for (int i = 0; i < 5000; ++i) file += "setting" + std::to_string(i) + ": 1\r\n";
    Editor editor(file, file);
    QElapsedTimer timer;
    timer.start();
    editor.form->LoadGrid();
    editor.Grid()->repaint();
    const qint64 spent = timer.elapsed();
    QVERIFY2(spent < 500, qPrintable(QString("%1 ms").arg(spent)));
    const qsizetype objects = editor.Grid()->findChildren<QObject*>().size();
    QVERIFY(objects < 100);

    editor.ClickCell(2, 1);
    QTest::keyClicks(editor.T(), "x");
    editor.Grid()->verticalScrollBar()->setValue(1000);
    QVERIFY(editor.T()->isHidden());
    QVERIFY(editor.Grid()->hasFocus());
    QTest::keySequence(editor.Grid(), QKeySequence::Undo);
    QCOMPARE(editor.Cell(2, 1), QString("1"));
    QCOMPARE(editor.Grid()->verticalScrollBar()->value(), 1000);
    timer.restart();
    for (int i = 0; i < 50; ++i) {
      editor.Grid()->verticalScrollBar()->setValue(i * 1000);
      editor.Grid()->repaint();
    }
    QVERIFY2(timer.elapsed() < 2500, qPrintable(QString("%1 ms").arg(timer.elapsed())));
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::EditorTest)
#include "EditorTest.moc"

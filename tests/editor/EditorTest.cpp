#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>

#include "editor/OpenEditor.h"
#include "widgets/SeriesTabs.h"

namespace quenmar {
namespace {

/// Refuses what begins with "no".
struct Events : xEditGridEvents {
  void SureChange(bool& cancel, String& newValue, int&, int&) override {
    cancel = newValue.starts_with(u"no");
  }
};

}  // namespace

class EditorTest : public QObject {
  Q_OBJECT

  PrivateState state_;

 private slots:
  void showsBothFiles() {
    Editor editor;
    QCOMPARE(editor.Grid()->model()->rowCount(), 3);
    QCOMPARE(editor.Row(0), "a|5|1|Mandatory");
    QCOMPARE(editor.Row(1), "b|6|2|Optional");
    QCOMPARE(editor.Row(2), "own|7||Optional");
    const QString folder = ToQString(PathText(editor.folder / "conf"));
    QCOMPARE(editor.form->windowTitle(), "Editing a.conf - " + folder + "[*]");
    QCOMPARE(editor.Find<QGroupBox>("Frame1")->title(), "Editing: a.conf");
    QCOMPARE(editor.Comment(), "About a & <b>");
    QVERIFY(editor.Grid()->columnWidth(0) > editor.Grid()->columnWidth(2));
    QVERIFY(editor.Grid()->hasFocus() && !editor.Changed());
    QCOMPARE(editor.messages.Take(), QStringList());
  }

  void commitsEveryChangeAtOnce() {
    Editor editor;
    const QAbstractItemModelTester tester(editor.Grid()->model());
    editor.ClickCell(0, 1);
    QCOMPARE(editor.T()->geometry(), editor.Grid()->visualRect(editor.Grid()->currentIndex()));
    QGuiApplication::clipboard()->setText("5");
    editor.Keys("Ctrl+A Ctrl+V");
    QVERIFY(!editor.Changed());  // the same text
    editor.Keys("Home x y");
    QCOMPARE(editor.Cell(0, 1), "xy5");
    QCOMPARE(editor.Settings(), "a=xy5 b=6 own=7");
    QCOMPARE(editor.T()->cursorPosition(), 2);
    editor.Keys("Backspace Backspace");
    QCOMPARE(editor.Cell(0, 1), "5");
    QVERIFY(editor.Changed());
  }

  void editsTheRowThatIsShown() {
    // Two settings of one name, and a value longer than lines of text commonly are.
    Editor editor("a: 1\r\n", "a: 1\r\n//a: 2\r\nlong: " + std::string(40000, 'x') + "\r\n");
    editor.ClickCell(1, 1);
    editor.Keys("9 Down");
    QCOMPARE(editor.T()->accessibleName(), "long, Actual Value");
    editor.Keys("Backspace");
    QCOMPARE(editor.Applied(), "a: 1\r\na: 29\r\nlong: " + std::string(39999, 'x') + "\r\n");
  }

  void movesTheEditByArrows() {
    Editor editor;
    editor.Keys("Right Return Down");
    QCOMPARE(editor.Grid()->currentIndex().row(), 1);
    QCOMPARE(editor.T()->text(), "6");
    QCOMPARE(editor.T()->geometry(), editor.Grid()->visualRect(editor.Grid()->currentIndex()));
    editor.Keys("Up");
    QCOMPARE(editor.T()->text(), "5");
    editor.Keys("Enter");
    QVERIFY(editor.T()->isHidden() && editor.Grid()->hasFocus());
    editor.Keys("Return Tab");
    QVERIFY(editor.T()->isHidden() && editor.Find<QWidget>("Comments")->hasFocus());
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
    QCOMPARE(editor.Comment(), "** n/a **");
  }

  void takesBackWhatWasTyped() {
    Editor editor;
    editor.ClickCell(0, 1);
    editor.Keys("x Down y z Esc");
    QCOMPARE(editor.Settings(), "a=5x b=6 own=7");  // of this edit only
    QCOMPARE(editor.T()->text(), "6");
    QVERIFY(editor.T()->hasFocus() && editor.form->isVisible());
    editor.Keys("Ctrl+Z");
    QCOMPARE(editor.Settings(), "a=5x b=6yz own=7");
    editor.messages.Answer({Button::kYes});
    editor.Keys("Esc");
    QVERIFY(!editor.form->isVisible());

    editor.Open();
    editor.ClickCell(0, 1);
    editor.Keys("Esc");
    QVERIFY(!editor.form->isVisible());
  }

  void lettersReplaceAValue() {
    Editor editor;
    editor.Keys("o");
    QCOMPARE(editor.Grid()->currentIndex(), editor.Grid()->model()->index(2, 0));  // searched
    editor.Keys("Right");
    for (const auto held : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
      QTest::sendKeyEvent(QTest::Click, editor.Grid(), Qt::Key_X, "x", held);
    }
    QInputMethodEvent composing("e", {});
    QApplication::sendEvent(editor.Grid(), &composing);
    QVERIFY(editor.T()->isHidden());
    QVERIFY(editor.Grid()->testAttribute(Qt::WA_InputMethodEnabled));
    QInputMethodEvent composed;
    composed.setCommitString("\u00E9");
    for (const auto& [key, text] :
         {std::pair("x", "x"), std::pair("Space", " "), std::pair("", "\u00E9")}) {
      if (*key == 0) {
        QApplication::sendEvent(editor.Grid(), &composed);
      } else {
        editor.Keys(key);
      }
      editor.Keys("b");
      QCOMPARE(editor.Cell(2, 1), QString(text) + "b");
      editor.Keys("Esc");
      QCOMPARE(editor.Cell(2, 1), "7");
      editor.Keys("Return");
    }
  }

  void marksWhatWillBeReadBackOtherwise() {
    Editor editor;
    for (const QColor base : {Qt::white, Qt::black}) {
      QPalette palette = editor.form->palette();
      palette.setColor(QPalette::Base, base);
      editor.form->setPalette(palette);
      editor.ClickCell(0, 1);
      editor.Keys("/ / x");
      QCOMPARE(editor.T()->toolTip(), "This will be read back as: 5");
      QCOMPARE(editor.T()->accessibleDescription(), editor.T()->toolTip());
      const QColor frame = editor.T()->grab().toImage().pixelColor(0, 0);
      QVERIFY(frame.red() > frame.green() + 80 && frame.red() > frame.blue() + 80);
      editor.Keys("Return");
      const QModelIndex cell = editor.Grid()->currentIndex();
      QCOMPARE(cell.data(Qt::ToolTipRole).toString(), editor.T()->toolTip());
      editor.ClickCell(1, 1);
      QCOMPARE(editor.T()->toolTip(), "");
      const QPoint corner = editor.Grid()->visualRect(cell).topLeft();
      QCOMPARE(editor.Grid()->viewport()->grab().toImage().pixelColor(corner), frame);
      editor.ClickCell(0, 1);
      editor.Keys("Backspace Backspace Backspace");
      QCOMPARE(editor.T()->toolTip() + cell.data(Qt::ToolTipRole).toString(), "");
    }
  }

  void asksBeforeItApplies() {
    Editor editor;
    editor.ClickCell(1, 1);
    editor.Keys("0");
    editor.messages.Answer({Button::kNo});
    editor.Press("Command3");
    QCOMPARE(ReadFile(editor.folder / "conf" / "a.conf"), kServer);
    QCOMPARE(editor.messages.Details(),
             "- b: 6\r\n+ b: 60\r\n+ //map: m3\r\n- // (1)\r\nlines are reformatted\r\n");
    QVERIFY(editor.Applied().starts_with("a: 5\r\nb: 60\r\n"));
    const QString question = "[36] Apply Changes?\r\n\r\nComment lines that will be lost: 1";
    QCOMPARE(editor.messages.Take(), QStringList({question, question, "[64] Saved!"}));
    editor.Press("Command4");
    QVERIFY(!editor.form->isVisible());
  }

  void sharesOutItsRoom() {
    Editor settings("a: 1\r\n", "a: 1\r\n");
    QVERIFY(!settings.Find<SeriesTabs>("TSeries")->isVisible());
    Editor series("map: m\r\n", "");
    QVERIFY(series.Find<SeriesTabs>("TSeries")->isVisible());
    const int frame = series.Find<QGroupBox>("Frame1")->height();
    QVERIFY(qAbs(series.Grid()->height() - frame / 8) <= 1);
    QCOMPARE(series.Comment(), "** n/a **");
    series.form->resize(1, 1);
    QCOMPARE(series.form->size(), QSize(334, 360));
    // A large font takes the room from the comments, not from the series.
    Editor both;
    const auto enlarge = [](const Editor& editor, int points, QSize size) {
      QFont font = editor.form->font();
      font.setPointSize(points);
      editor.form->setFont(font);
      editor.form->resize(size);
    };
    enlarge(both, 20, {334, 361});
    const auto* const tabs = both.Find<SeriesTabs>("TSeries");
    QVERIFY(tabs->height() > tabs->tabBar()->height());
    // However large it is, the window does not outgrow the screen.
    Editor huge;
    enlarge(huge, 60, {500, 500});
    QVERIFY(huge.form->frameGeometry().height() <= huge.form->screen()->availableSize().height());
    for (const Editor* const editor : {&settings, &series, &both, &huge}) {
      for (const char* const name : {"Command3", "Command4"}) {
        const QRect button = editor->Find<QPushButton>(name)->geometry();
        QVERIFY(editor->form->rect().contains(button));
      }
    }
  }

  void undoesAndRedoesByKey() {
    Editor editor;
    const auto* const undo = editor.Find<QAction>("Undo");
    const auto* const redo = editor.Find<QAction>("Redo");
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    editor.ClickCell(1, 1);
    editor.Keys("x y Down z Up Down w");  // the last one is another edit of the same value
    for (const char* const left : {"a=5 b=6xy own=7z", "a=5 b=6xy own=7", "a=5 b=6 own=7"}) {
      QVERIFY(editor.Changed() && undo->isEnabled());
      editor.Keys("Ctrl+Z");
      QCOMPARE(editor.Settings(), left);
      QVERIFY(editor.T()->isHidden() && editor.Grid()->hasFocus());
      QCOMPARE(editor.Grid()->currentIndex(), editor.Grid()->model()->index(2, 1));
    }
    QVERIFY(!editor.Changed() && !undo->isEnabled());
    QCOMPARE(editor.Cell(1, 1), "6");
    editor.Keys("Ctrl+Y");
    QCOMPARE(editor.Cell(1, 1), "6xy");
    editor.ClickCell(0, 1);
    editor.Keys("Ctrl+Shift+Z");
    QCOMPARE(editor.Cell(2, 1), "7z");
    QCOMPARE(editor.Grid()->currentIndex().row(), 0);

    QListWidget* const maps = editor.List(0);
    maps->setFocus();
    editor.Keys("Down Space");
    QCOMPARE(editor.Comment(), "** n/a **");
    for (const bool on : {false, true, false}) {
      editor.Keys(on ? "Ctrl+Y" : "Ctrl+Z");
      QCOMPARE(maps->item(1)->checkState(), on ? Qt::Checked : Qt::Unchecked);
      QVERIFY(maps->hasFocus() && maps->currentRow() == 1);
    }
    editor.Find<QWidget>("Comments")->setFocus();
    editor.Keys("Ctrl+Z");
    QCOMPARE(editor.Cell(2, 1), "7");
  }

  void copiesAndPastes() {
    Editor editor;
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->setText("one\r\ntwo");
    editor.ClickCell(0, 1);
    editor.Keys("Ctrl+V Ctrl+C");
    QCOMPARE(editor.Cell(0, 1), "5one two");
    QCOMPARE(clipboard->text(), "5one two");
    editor.T()->setSelection(1, 3);
    editor.Keys("Ctrl+C");
    QCOMPARE(clipboard->text(), "one");
    editor.Find<QWidget>("Comments")->setFocus();
    editor.Keys("Ctrl+C");
    QCOMPARE(clipboard->text(), "About a & <b>");
  }

  void offersCopyInEveryMenu() {
    Editor editor;
    const auto ask = [](QWidget* asked, QContextMenuEvent::Reason reason, const char* chosen) {
      return MenuOf(
          [asked, reason] {
            QContextMenuEvent event(reason, QPoint(2, 2), QPoint(2, 2));
            QApplication::sendEvent(asked, &event);
          },
          chosen);
    };
    const QStringList own{"Copy", "", "SetToOriginal", "Switch", "", "Find"};
    QCOMPARE(ask(editor.Grid()->viewport(), QContextMenuEvent::Mouse, ""), own);
    QCOMPARE(ask(editor.Grid(), QContextMenuEvent::Keyboard, "Copy"), own);
    QCOMPARE(QGuiApplication::clipboard()->text(), "a");
    editor.ClickCell(0, 1);
    editor.Keys("x Down");
    const QStringList offered = ask(editor.T(), QContextMenuEvent::Keyboard, "Undo");
    for (const char* const name : {"Undo", "Redo", "Copy", "Paste", "Switch"}) {
      QCOMPARE(offered.count(name), 1);
    }
    QVERIFY(offered.size() > 9);  // to cut, too
    QCOMPARE(editor.Cell(0, 1), "5");
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
    PressKeys(view, "Right Return");
    QCOMPARE(view.model()->rowCount(), 2);
    auto* const list = view.findChild<QComboBox*>("C");
    QVERIFY(list->hasFocus());
    QCOMPARE(list->geometry(), view.visualRect(view.currentIndex()));
    QCOMPARE(list->currentIndex(), -1);
    const auto shown = [&view] { return view.currentIndex().data().toString(); };
    // "no" is refused.
    for (const auto& [key, label] :
         {std::pair("Down", "yes"), std::pair("Down", "yes"), std::pair("End", "maybe")}) {
      PressKeys(view, key);
      QCOMPARE(shown(), label);
      QCOMPARE(list->currentText(), label);
    }
    PressKeys(view, "Return");
    QVERIFY(list->isHidden() && view.hasFocus());

    PressKeys(view, "Left Return n o");
    QCOMPARE(view.findChild<QLineEdit*>("T")->text(), "n");
    QCOMPARE(shown(), "n");
  }

  void loadsManyRowsAtOnce() {
    std::string file;
    for (int i = 0; i < 5000; ++i) file += "setting" + std::to_string(i) + ": 1\r\n";
    Editor editor(file, file);
    QScrollBar* const bar = editor.Grid()->verticalScrollBar();
    QElapsedTimer timer;
    timer.start();
    editor.form->LoadGrid();
    editor.Grid()->repaint();
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString("%1 ms").arg(timer.elapsed())));
    QVERIFY(editor.Grid()->findChildren<QObject*>().size() < 100);

    editor.ClickCell(2, 1);
    editor.Keys("x");
    bar->setValue(1000);
    QVERIFY(editor.T()->isHidden() && editor.Grid()->hasFocus());
    editor.Keys("Ctrl+Z");
    QCOMPARE(editor.Cell(2, 1), "1");
    QCOMPARE(bar->value(), 1000);
    timer.restart();
    for (int i = 0; i < 50; ++i) {
      bar->setValue(i * 1000);
      editor.Grid()->repaint();
    }
    QVERIFY2(timer.elapsed() < 2500, qPrintable(QString("%1 ms").arg(timer.elapsed())));
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::EditorTest)
#include "EditorTest.moc"

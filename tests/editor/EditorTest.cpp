#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QComboBox>
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

class EditorTest : public OpenEditor {
  Q_OBJECT

  void OpenSample() {
    Open("// About a & &lt;b>\r\na: 1\r\n\r\n//b: 2\r\nmap: m1\r\nmap: m3\r\n",
         "// About a & &lt;b>\r\na: 5\r\n\r\nb: 6\r\nown: 7\r\nmap: m1\r\n//map: m2\r\n");
  }
  void Enlarge(int points, QSize size) {
    QFont font = window_->font();
    font.setPointSize(points);
    window_->setFont(font);
    window_->resize(size);
  }
  bool HasButtonsInside() {
    const QRect room = window_->rect();
    return room.contains(Find<QWidget>("Command3")->geometry()) &&
           room.contains(Find<QWidget>("Command4")->geometry());
  }

 private slots:
  void showsBothFiles() {
    OpenSample();
    QStringList cells;
    for (int cell = 0; cell < 12; ++cell) cells << Cell(cell / 4, cell % 4);
    QCOMPARE(cells.join('|'), "a|5|1|Mandatory|b|6|2|Optional|own|7||Optional");
    QCOMPARE(Grid()->model()->rowCount(), 3);
    const QString folder = ToQString(PathText(folder_->Folder()));
    QCOMPARE(window_->windowTitle(), "Editing a.conf - " + folder + "[*]");
    QCOMPARE(Find<QGroupBox>("Frame1")->title(), "Editing: a.conf");
    QVERIFY(Grid()->columnWidth(0) > Grid()->columnWidth(2));
  }

  void commitsEveryChangeAtOnce() {
    OpenSample();
    const QAbstractItemModelTester tester(Grid()->model());
    ClickCell(0, 1);
    Keys("Home x y");
    QCOMPARE(Cell(0, 1), "xy5");
    QCOMPARE(Settings(), "a=xy5 b=6 own=7");
    QCOMPARE(T()->cursorPosition(), 2);
  }

  void editsTheRowThatIsShown() {
    // Two settings of one name, and a value longer than lines of text commonly are.
    Open("a: 1\r\n", "a: 1\r\n//a: 2\r\nlong: " + std::string(40000, 'x') + "\r\n");
    ClickCell(1, 1);
    Keys("9 Down");
    QCOMPARE(T()->accessibleName(), "long, Actual Value");
    Keys("Backspace");
    QCOMPARE(Applied(), "a: 1\r\na: 29\r\nlong: " + std::string(39999, 'x') + "\r\n");

    // Where the file keeps its lines, all of a name have one value.
    Open("a: 1\r\n", "a: 1\r\n//a: 2\r\n", Layout::kServer);
    ClickCell(0, 1);
    Keys("9");
    QCOMPARE(Cell(1, 1), "19");
  }

  void movesTheEditByArrows() {
    OpenSample();
    Keys("Right Return Down");
    QCOMPARE(T()->text(), "6");
    QCOMPARE(T()->geometry(), Grid()->visualRect(Index(1, 1)));
    Keys("Up");
    QCOMPARE(T()->text(), "5");
    Keys("Enter");
    QVERIFY(T()->isHidden() && Grid()->hasFocus());
    Keys("Return Tab");
    QVERIFY(T()->isHidden() && Comments()->hasFocus());
    ClickCell(0, 2);
    QVERIFY(T()->isHidden());  // read only
  }

  void showsOneCommentForAllRowsOfAName() {
    Open("", "// One\xA0\r\n// two\r\na: 1\r\n//a: 2\r\n");
    Comments()->selectAll();
    ClickCell(1, 0);
    QVERIFY(Comment().endsWith("\ntwo"));
    QVERIFY(Comments()->textCursor().hasSelection());  // the same text again
  }

  void takesBackWhatWasTyped() {
    OpenSample();
    ClickCell(0, 1);
    Keys("x Down y z Esc");
    QCOMPARE(Settings(), "a=5x b=6 own=7");  // of this edit only
    QCOMPARE(T()->text(), "6");
    QVERIFY(T()->hasFocus() && window_->isVisible());
    Keys("Ctrl+Z");
    QCOMPARE(Settings(), "a=5x b=6yz own=7");
    messages_.Answer({Button::kNo, Button::kNo, Button::kYes});
    Keys("Esc Return Esc");
    Press("Command4");
    QVERIFY(!window_->isVisible());
  }

  void lettersReplaceAValue() {
    OpenSample();
    Keys("o");
    QCOMPARE(Grid()->currentIndex(), Index(2, 0));  // searched
    Keys("Right");
    for (const auto held : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
      QTest::sendKeyEvent(QTest::Click, Grid(), Qt::Key_X, "x", held);
    }
    QInputMethodEvent composing("e", {});
    QApplication::sendEvent(Grid(), &composing);
    QVERIFY(T()->isHidden());
    QVERIFY(Grid()->testAttribute(Qt::WA_InputMethodEnabled));
    composing.setCommitString("\u00E9");
    QApplication::sendEvent(Grid(), &composing);
    for (const auto& [keys, value] :
         {std::pair("b", "\u00E9b"), std::pair("x b", "xb"), std::pair("Space b", " b")}) {
      Keys(keys);
      QCOMPARE(Cell(2, 1), value);
      Keys("Esc Return");
    }
  }

  void marksWhatWillBeReadBackOtherwise() {
    OpenSample();
    for (const QColor base : {Qt::white, Qt::black}) {
      QPalette palette = window_->palette();
      palette.setColor(QPalette::Base, base);
      window_->setPalette(palette);
      ClickCell(0, 1);
      Keys("/ / x");
      QCOMPARE(T()->accessibleDescription(), "This will be read back as: 5");
      const QColor frame = T()->grab().toImage().pixelColor(0, 0);
      QVERIFY(frame.red() > frame.green() + 80 && frame.red() > frame.blue() + 80);
      Keys("Return");
      QCOMPARE(Cell(0, 1, Qt::ToolTipRole), T()->accessibleDescription());
      ClickCell(1, 1);
      const QPoint corner = Grid()->visualRect(Index(0, 1)).topLeft();
      QCOMPARE(Grid()->viewport()->grab().toImage().pixelColor(corner), frame);
      ClickCell(0, 1);
      Keys("Backspace Backspace Backspace");
      QCOMPARE(T()->accessibleDescription() + Cell(0, 1, Qt::ToolTipRole), "");
    }
  }

  void sharesOutItsRoom() {
    Open("a: 1\r\n", "a: 1\r\n");
    QVERIFY(HasButtonsInside() && !Find<SeriesTabs>("TSeries")->isVisible());
    Open("map: m\r\n", "");
    QVERIFY(Find<SeriesTabs>("TSeries")->isVisible());
    const int frame = Find<QGroupBox>("Frame1")->height();
    QVERIFY(qAbs(Grid()->height() - frame / 8) <= 1);
    window_->resize(1, 1);
    QCOMPARE(window_->size(), QSize(334, 360));
    QVERIFY(HasButtonsInside());
    // A large font takes the room from the comments, not from the series.
    OpenSample();
    Enlarge(20, {334, 361});
    const auto* const tabs = Find<SeriesTabs>("TSeries");
    QVERIFY(HasButtonsInside() && tabs->height() > tabs->tabBar()->height());
    // However large it is, the window does not outgrow the screen.
    OpenSample();
    Enlarge(60, {500, 500});
    QVERIFY(window_->frameGeometry().height() <= window_->screen()->availableSize().height());
    QVERIFY(HasButtonsInside());
  }

  void undoesAndRedoesByKey() {
    OpenSample();
    ClickCell(1, 1);
    Keys("x y Down z Up Down w");  // the last one is another edit of the same value
    for (const char* const left : {"a=5 b=6xy own=7z", "a=5 b=6xy own=7", "a=5 b=6 own=7"}) {
      QVERIFY(Changed());
      Keys("Ctrl+Z");
      QCOMPARE(Settings(), left);
      QVERIFY(T()->isHidden() && Grid()->hasFocus());
      QCOMPARE(Grid()->currentIndex(), Index(2, 1));
    }
    QVERIFY(!Changed());
    Keys("Ctrl+Y");
    QCOMPARE(Cell(1, 1), "6xy");
    ClickCell(0, 1);
    Keys("Ctrl+Shift+Z");
    QCOMPARE(Cell(2, 1), "7z");
    QCOMPARE(Grid()->currentIndex().row(), 0);

    Maps()->setFocus();
    Keys("Down Space");
    for (const bool on : {false, true, false}) {
      Keys(on ? "Ctrl+Y" : "Ctrl+Z");
      QCOMPARE(Maps()->item(1)->checkState(), on ? Qt::Checked : Qt::Unchecked);
      QVERIFY(Maps()->hasFocus() && Maps()->currentRow() == 1);
    }
    Comments()->setFocus();
    Keys("Ctrl+Z");
    QCOMPARE(Cell(2, 1), "7");
  }

  void copiesAndPastes() {
    OpenSample();
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->setText("\r\none\r\ntwo");
    ClickCell(0, 1);
    Keys("Ctrl+V Ctrl+C");
    QCOMPARE(Cell(0, 1), "5 one two");
    QCOMPARE(clipboard->text(), "5 one two");
    T()->setSelection(2, 3);
    Keys("Ctrl+C");
    QCOMPARE(clipboard->text(), "one");
    Comments()->setFocus();
    Keys("Ctrl+C");
    QCOMPARE(clipboard->text(), "About a & <b>");
    Comments()->moveCursor(QTextCursor::NextWord, QTextCursor::KeepAnchor);
    Keys("Ctrl+C");
    QCOMPARE(clipboard->text(), "About ");
  }

  void offersCopyInEveryMenu() {
    OpenSample();
    const QStringList own{"Copy", "", "SetToOriginal", "Switch", "", "Find"};
    QCOMPARE(MenuOf(Grid()->viewport(), {}, QContextMenuEvent::Mouse), own);
    QCOMPARE(MenuOf(Grid(), "Copy"), own);
    QCOMPARE(QGuiApplication::clipboard()->text(), "a");
    ClickCell(0, 1);
    Keys("x Down");
    const QStringList offered = MenuOf(T(), "Undo");
    for (const char* const name : {"Undo", "Redo", "Copy", "Paste", "Switch"}) {
      QCOMPARE(offered.count(name), 1);
    }
    QVERIFY(offered.size() > 9);  // to cut, too
    QCOMPARE(Cell(0, 1), "5");
    QCOMPARE(window_->focusWidget(), Grid());
  }

  void choosesAndGrowsAndRefuses() {
    window_.reset();  // it is modal
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
    PressKeys(view, "Return Return");
    QCOMPARE(list->count(), 3);

    PressKeys(view, "Left Return n o");
    QCOMPARE(view.findChild<QLineEdit*>("T")->text(), "n");
    QCOMPARE(shown(), "n");
  }

  void manyRowsCostNoControls() {
    std::string file;
    for (int i = 0; i < 5000; ++i) file += "setting" + std::to_string(i) + ": 1\r\n";
    Open(file, file);
    QScrollBar* const bar = Grid()->verticalScrollBar();
    window_->LoadGrid();
    Grid()->repaint();
    QVERIFY(Grid()->findChildren<QObject*>().size() < 100);

    ClickCell(2, 1);
    Keys("x");
    bar->setValue(1000);
    QVERIFY(T()->isHidden() && Grid()->hasFocus());
    Keys("Ctrl+Z");
    QCOMPARE(Cell(2, 1), "1");
    QCOMPARE(bar->value(), 1000);
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::EditorTest)
#include "EditorTest.moc"

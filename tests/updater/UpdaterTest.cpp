#include <QAction>
#include <array>
#include <functional>

#include "updater/OpenUpdater.h"

namespace quenmar {
namespace {

const QString kMandatory = "[291] The %1 parameter is mandatory, delete anyway?";
const QString kApplyChanges = "[36] Apply Changes?";
const QString kIgnoreChanges = "[292] Ignore Changes?";
const QString kSaved = "[64] Saved!";

}  // namespace

class UpdaterTest : public OpenUpdater {
  Q_OBJECT

 private slots:
  void init() {
    window_.reset();
    folder_ = std::make_unique<ScratchFolder>();
    options_ = {};
    messages_.Take();
  }

  void ListsShowWhatIsNewCurrentAndObsolete() {
    Open();
    QCOMPARE(window_->windowTitle(), "Check Changes - a.conf[*]");
    QVERIFY(window_->isModal() && !window_->isWindowModified());
    QCOMPARE(Items(0), "+need may");
    QCOMPARE(Items(1), "keep free must");
    QCOMPARE(Items(2), "own old");
    QCOMPARE(Pages()->currentIndex(), 0);
    QVERIFY(List(0)->hasFocus());
    for (int k = 0; k < 3; ++k) QCOMPARE(List(k)->currentRow(), 0);
  }

  void SelectionShowsCommentStateAndValue() {
    Open();
    QCOMPARE(Comments(), "The first.");
    QCOMPARE(Hint()->text(), " [Mandatory]");
    QCOMPARE(Find<QLineEdit>("txtOriginalValue")->text(), "1");
    Click(List(0), 1);
    QCOMPARE(Comments(), "** n/a **");
    QCOMPARE(Hint()->text(), " [Optional]");
    QCOMPARE(Find<QLineEdit>("txtOriginalValue")->text(), "2");
    Click(List(2), 0);
    QCOMPARE(Comments(), "Mine.");
    QCOMPARE(Find<QLineEdit>("txtValue")->text(), "9");
    Click(List(0), 1);
    Type("txtOriginalValue", "two");
    QCOMPARE(Find<QLineEdit>("txtValue")->text(), "two");
    Pages()->setCurrentIndex(1);
    QCOMPARE(Comments(), "Both know me.");
    QCOMPARE(Hint()->text(), " [Mandatory]");
    QCOMPARE(Find<QLineEdit>("txtActualValue")->text(), "30");
    Click(List(1), 1);
    QCOMPARE(Hint()->text(), " [Optional]");
    QCOMPARE(window_->Changed(), 0);
  }

  void TicksOfNewSettingsAreUndone() {
    Open();
    const auto* const hint = Find<QLabel>("lblCheckHint");
    QCOMPARE(hint->text(), "");
    for (int row = 0; row < 2; ++row) Click(List(0), row, true);
    QCOMPARE(Items(0), "+need may");
    QCOMPARE(hint->text(), "Checked: Mandatory, Unchecked: Optional");
    QCOMPARE(window_->Changed(), 0);
  }

  void RefusedMovesLeaveTicks() {
    Open();
    Pages()->setCurrentIndex(1);
    QVERIFY(!Find<QPushButton>("cmdMove1")->isEnabled());
    for (int row = 0; row < 3; ++row) Click(List(1), row, true);
    messages_.Answer({Button::kCancel, Button::kNo, Button::kYes});
    for (const char* const left : {"+keep +free +must", "keep"}) {
      Press("cmdMove1");
      QCOMPARE(messages_.Take().first(), kMandatory.arg("keep"));
      QCOMPARE(Items(1), left);
    }
  }

  void SelectAllTicksWhatButtonsMove() {
    Open();
    Click(List(2), 1, true);
    Press("cmdMove2");
    QCOMPARE(Items(1), "keep free must old");
    Press("cmdSelectAll0");
    QCOMPARE(Items(0), "+need +may");
    QCOMPARE(Find<QLabel>("lblCheckHint")->text(), "");
    Press("cmdSelectAll2");
    QCOMPARE(Items(2), "+own");
    QVERIFY(List(0)->isVisible() && List(2)->isVisible());
  }

  void EditorsWithoutItemTakeNoKeys() {
    Open("", "b: 2\r\n");
    QVERIFY(!List(0)->isEnabled() && !List(1)->isEnabled() && List(2)->isEnabled());
    QVERIFY(!Find<QPushButton>("cmdMove0")->isEnabled());
    QVERIFY(!Find<QLineEdit>("txtOriginalValue")->isEnabled());
    Pages()->setCurrentIndex(1);
    QVERIFY(!Find<QLineEdit>("txtActualValue")->isEnabled());
    QCOMPARE(Comments() + Hint()->text(), "");
  }

  void SeriesHaveTabs() {
    Open();
    auto* const tabs = Find<QTabWidget>("TSeries");
    QCOMPARE(tabs->tabText(0), "map(3)");
    QCOMPARE(tabs->tabText(1), "npc(1)");
    QVERIFY(tabs->isVisible() && !tabs->isTabVisible(2));
    QCOMPARE(Items(Find<QListWidget>("lstSeries0")), "+town home inn");
    Click(Find<QListWidget>("lstSeries0"), 1);
    QCOMPARE(window_->Changed(), 0);
    Open("a: 1\r\n", "a: 2\r\n");
    QVERIFY(!Find<QTabWidget>("TSeries")->isVisible());
  }

  void OnlyASaveThatSucceedsEndsTheChanges() {
    Open("a: 1\r\n", "a: 2\r\nown: 9\r\n");
    Type("txtActualValue", "3");
    messages_.Answer({Button::kNo});
    Press("cmdApply");
    QCOMPARE(messages_.Take(), {kApplyChanges});
    QCOMPARE(ReadFile(*folder_ / "a.conf"), "a: 2\r\nown: 9\r\n");
    QCOMPARE(Applied(), "a: 3\r\n");
    QCOMPARE(messages_.Take(), (QStringList{kApplyChanges, kSaved}));
    QVERIFY(!window_->isWindowModified());

    Type("txtActualValue", "4");
    std::filesystem::remove_all(folder_->Folder());
    messages_.Answer({Button::kYes});  // to save over what has changed on the disk
    Applied();
    QVERIFY(messages_.Take().last().startsWith("[0] Error: "));
    QCOMPARE(window_->Changed(), 2);
    messages_.Answer({Button::kNo, Button::kYes});
    for (const bool stays : {true, false}) {
      Press("cmdClose");
      QCOMPARE(window_->isVisible(), stays);
    }
    QCOMPARE(messages_.Take(), QStringList(2, kIgnoreChanges));
  }

  void MovesKeepPlacesAndOtherTicks() {
    std::string dist, both;
    for (int i = 10; i < 80; ++i) {
      dist += "//n" + std::to_string(i) + ": 1\r\n";
      both += "b" + std::to_string(i) + ": 1\r\n";
    }
    Open(dist + both, both + "o1: 1\r\no2: 2\r\no3: 3\r\no4: 4\r\n");
    Click(List(2), 3, true);
    Click(List(2), 1);
    Click(List(0), 60);
    Press("cmdMove0");
    QCOMPARE(List(0)->currentItem()->text(), "n71");
    const QRect shown = List(0)->visualItemRect(List(0)->currentItem());
    QVERIFY(List(0)->viewport()->rect().contains(shown));
    QCOMPARE(Items(2), "o1 o2 o3 +o4");
    Click(List(0), 68);  // the last one
    Press("cmdMove0");
    QCOMPARE(List(0)->currentRow(), 67);
    Pages()->setCurrentIndex(1);
    Click(List(1), 0, true);
    Pages()->setCurrentIndex(0);
    Press("cmdMove2");
    QCOMPARE(List(1)->item(0)->checkState(), Qt::Checked);
    QCOMPARE(Items(2), "o1 o2 o3");
    QCOMPARE(List(2)->currentRow(), 1);
    QCOMPARE(List(0)->currentRow(), 67);
  }

  void ValuesCanBeTakenBackAndAreMarked() {
    Open("a: 1\r\nb: 2\r\nn: 3\r\nm: 4\r\n", "a: 1\r\nb: 2\r\n");
    for (const int page : {0, 1}) {
      Pages()->setCurrentIndex(page);
      const char* const name = page == 0 ? "txtOriginalValue" : "txtActualValue";
      auto* const editor = Find<QLineEdit>(name);
      editor->setFocus();
      Type(name, "p//q");
      QCOMPARE(editor->toolTip(), "This will be read back as: p");
      QCOMPARE(editor->accessibleDescription(), editor->toolTip());
      Click(List(page), 1);
      Click(List(page), 0);
      editor->setFocus();
      Type(name, "r");
      QCOMPARE(editor->toolTip(), "");
      QTest::keyClick(editor, Qt::Key_Escape);
      QCOMPARE(editor->text(), "p//q");  // since the setting was chosen
      QVERIFY(window_->isVisible());
    }
    Applied();
    Find<QLineEdit>("txtActualValue")->clearFocus();
    Find<QLineEdit>("txtActualValue")->setFocus();
    QTest::keyClick(Find<QLineEdit>("txtActualValue"), Qt::Key_Escape);
    QVERIFY(!window_->isVisible());
  }

  void ChangesPageFollowsItsLists() {
    Open("a: 1\r\n//c: 1\r\n", "a: 2\r\n");
    QVERIFY(Pages()->isTabEnabled(0));
    Press("cmdMove0");
    QVERIFY(!Pages()->isTabEnabled(0));
    QCOMPARE(Pages()->currentIndex(), 1);
    Click(List(1), 1, true);
    Press("cmdMove1");
    QVERIFY(Pages()->isTabEnabled(0));
    QCOMPARE(Items(2), "c");

    Open("a: 1\r\n", "a: 2\r\n");
    QVERIFY(!Pages()->isTabEnabled(0));
    QCOMPARE(Pages()->currentIndex(), 1);
    QVERIFY(List(1)->hasFocus());
  }

  void HelpExplainsTheLists() {
    Open();
    Press("cmdHelp0");
    Press("cmdHelp1");
    QCOMPARE(messages_.Take(),
             (QStringList{"[64] " + ToQString(language_.Text(Message::kNewSettingsHelp)),
                          "[64] " + ToQString(language_.Text(Message::kObsoleteSettingsHelp))}));
    QCOMPARE(window_->Changed(), 0);
  }

  void UndoesAndRedoesByKey() {
    Open();
    const auto* const undo = Find<QAction>("Undo");
    const auto* const redo = Find<QAction>("Redo");
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    QCOMPARE(undo->shortcuts(), QKeySequence::keyBindings(QKeySequence::Undo));
    const auto type = [this](const char* editor) {
      Find<QLineEdit>(editor)->setFocus();
      Type(editor, "x//y");
    };
    Press("cmdSelectAll2");
    auto* const maps = Find<QListWidget>("lstSeries0");
    const std::function<void()> steps[] = {
        [&] { type("txtOriginalValue"); }, [&] { Press("cmdMove0"); },
        [&] { type("txtActualValue"); }, [&] { Press("cmdMove2"); },
        [&] { QTest::keyClick(maps, Qt::Key_Space); }};
    const auto state = [&] {
      QStringList shown;
      for (const auto list : {FileMerge::List::kNew, FileMerge::List::kActual}) {
        shown << QString::fromStdString(Values(merge_->Tree(list)));
      }
      for (int k = 0; k < 3; ++k) shown << Items(k).remove('+');
      return shown << Find<QLineEdit>("txtActualValue")->text() << Items(maps);
    };
    QList<QStringList> states{state()};
    QList<int> changed;
    for (const auto& step : steps) {
      step();
      changed << window_->Changed();
      QVERIFY(!states.contains(state()));
      states << state();
    }
    QCOMPARE(changed, (QList<int>{0, 1, 2, 1, 4}));
    const auto press = [this](const QKeySequence& key) {
      QTest::keySequence(window_->focusWidget(), key);
    };
    const auto count = states.size();
    for (auto i = count - 2; i >= 0; --i) {
      QVERIFY(undo->isEnabled());
      press(QKeySequence::Undo);
      QCOMPARE(state(), states[i]);
      QCOMPARE(window_->isWindowModified(), i > 1);  // a new setting's value is not saved
      QVERIFY(redo->isEnabled());
    }
    QVERIFY(!undo->isEnabled());
    Find<QLineEdit>("txtOriginalValue")->setFocus();
    press(QKeySequence::Undo);  // nothing, also not in the editor
    QCOMPARE(state(), states[0]);
    for (int i = 1; i < count; ++i) {
      press(QKeySequence(i % 2 == 0 ? "Ctrl+Y" : "Ctrl+Shift+Z"));
      QCOMPARE(state(), states[i]);
    }
    QVERIFY(!redo->isEnabled() && window_->isWindowModified());
    Applied();
    QVERIFY(!window_->isWindowModified());
    press(QKeySequence::Undo);
    QVERIFY(window_->isWindowModified());
    press(QKeySequence::Redo);
    QVERIFY(!window_->isWindowModified());
  }

  void UndoKeepsTicksAndFocus() {
    Open("a: 1\r\nb: 2\r\nc: 3\r\n//d: 4\r\n", "a: 1\r\nb: 2\r\nc: 3\r\nd: 4\r\n");
    Click(List(1), 3, true);
    Press("cmdMove1");
    Click(List(1), 0, true);
    Click(List(1), 2);
    Pages()->setCurrentIndex(0);
    for (QWidget* const focused : std::initializer_list<QWidget*>{
             List(2), Find<QLineEdit>("txtValue"), Find<QPlainTextEdit>("txtComments")}) {
      Pages()->setCurrentIndex(0);
      focused->setFocus();
      QVERIFY(focused->hasFocus());
      QTest::keySequence(focused, QKeySequence::Undo);  // which leaves that page without settings
      QCOMPARE(Pages()->currentIndex(), 1);
      QCOMPARE(Items(1), "+a b c d");
      QCOMPARE(List(1)->currentRow(), 2);
      QVERIFY(window_->focusWidget() == focused ? focused->isVisible() : List(1)->hasFocus());
      QTest::keySequence(window_->focusWidget(), QKeySequence::Redo);
      QCOMPARE(Items(2), "d");
    }
  }

  void WorksByKeyboardAlone() {
    Open();
    QTest::keyClick(window_->focusWidget(), Qt::Key_Down);
    QTest::keyClick(window_->focusWidget(), Qt::Key_Tab);
    QCOMPARE(window_->focusWidget()->objectName(), "cmdMove0");
    QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
    QCOMPARE(Items(1), "keep free must may");
    QTest::keyClick(window_->focusWidget(), Qt::Key_Space);
    QVERIFY(!List(0)->isEnabled());
    QCOMPARE(window_->focusWidget(), List(2));  // and not whatever comes next
    QCOMPARE(Comments(), "Mine.");
    QTest::keyClick(window_->focusWidget(), Qt::Key_Space);
    QCOMPARE(Items(2), "+own old");
    QTest::keyClick(Find<QLineEdit>("txtActualValue"), Qt::Key_Return);
    QCOMPARE(messages_.Take(), {});
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::UpdaterTest)
#include "UpdaterTest.moc"

#include <QScrollBar>

#include "updater/OpenUpdater.h"

namespace quenmar {
namespace {

constexpr const char* kDistribution =
    "// The first.\r\nneed: 1\r\n\r\n//may: 2\r\n\r\n// Both know me.\r\nkeep: 3\r\n\r\n//free: 4"
    "\r\n\r\nmust: 5\r\n\r\nmap: town\r\nmap: inn\r\nnpc: guard\r\n";
constexpr const char* kServer =
    "// Mine.\r\nown: 9\r\n\r\nkeep: 30\r\n\r\nfree: 40\r\n\r\nmust: 50\r\n\r\nold: 8\r\n\r\n"
    "map: town\r\n//map: home\r\n";

}  // namespace

class UpdaterTest : public OpenUpdater {
  Q_OBJECT

  void OpenSample() { Open(kDistribution, kServer); }

 private slots:
  void SelectionShowsCommentStateAndValue() {
    OpenSample();
    QVERIFY(window_->isModal());
    QCOMPARE(Lists(), "+need may | keep free must | own old");
    const auto shown = [this](const char* editor) {
      return Comment() + Label("lblHint") + ' ' + Text(editor);
    };
    QCOMPARE(shown("txtOriginalValue"), "The first. [Mandatory] 1");
    Click(kNew, 1);
    QCOMPARE(shown("txtOriginalValue"), "** n/a ** [Optional] 2");
    Click(kObsolete, 0);
    QCOMPARE(shown("txtValue"), "Mine. [Optional] 9");
    Click(kNew, 1);
    Type("txtOriginalValue", "two");
    QCOMPARE(Text("txtValue"), "two");
    Pages()->setCurrentIndex(1);
    QCOMPARE(shown("txtActualValue"), "Both know me. [Mandatory] 30");
    Click(kKept, 1);
    QCOMPARE(shown("txtActualValue"), "** n/a ** [Optional] 40");
    QCOMPARE(window_->Changed(), 0);
    Keys("Ctrl+F");
    Find<QLineEdit>("txtFind")->setText("know ME");
    QCOMPARE(Items(kKept), "keep");  // found by its comment
  }

  void TicksOfNewSettingsAreUndone() {
    OpenSample();
    const auto* const hint = Find<QLabel>("lblCheckHint");
    Press("cmdSelectAll0");
    QVERIFY(List(kNew)->isVisible());
    QCOMPARE(Items(kNew) + hint->text(), "+need +may");
    for (const int row : {0, 1}) Click(kNew, row, true);
    QCOMPARE(Items(kNew), "+need may");
    QCOMPARE(hint->text(), "Checked: Mandatory, Unchecked: Optional");
    QCOMPARE(window_->Changed(), 0);
  }

  void RefusedMovesLeaveTicks() {
    OpenSample();
    Pages()->setCurrentIndex(1);
    QVERIFY(!IsEnabled("cmdMove1"));
    for (const int row : {0, 1, 2}) Click(kKept, row, true);
    messages_.Answer({Button::kCancel, Button::kNo, Button::kYes});
    for (const char* const left : {"+keep +free +must", "keep"}) {
      Press("cmdMove1");
      QCOMPARE(messages_.Take().first(), "[291] The keep parameter is mandatory, delete anyway?");
      QCOMPARE(Items(kKept), left);
    }
  }

  void ControlsWithoutItemTakeNoKeys() {
    Open("", "b: 2\r\n");
    Pages()->setCurrentIndex(1);
    QStringList controls{"lstParameters0", "lstParameters1",   "lstParameters2",
                         "cmdMove0",       "txtOriginalValue", "txtActualValue"};
    controls.removeIf([this](const QString& control) { return !IsEnabled(control); });
    QCOMPARE(controls, {"lstParameters2"});
    QCOMPARE(Label("lblHint") + Comments()->accessibleName() + Comment(), "** n/a **");
  }

  void SeriesHaveTabs() {
    OpenSample();
    const auto* const tabs = Find<QTabWidget>("TSeries");
    QCOMPARE(tabs->tabText(0) + tabs->tabText(1), "map(3)npc(1)");
    QVERIFY(tabs->isVisible() && !tabs->isTabVisible(2));
    QCOMPARE(Items(Find<QListWidget>("lstSeries0")), "+town home inn");
    Open("a: 1\r\n", "a: 2\r\n");
    QVERIFY(!Find<QTabWidget>("TSeries")->isVisible());
  }

  void OnlyASaveThatSucceedsEndsTheChanges() {
    const std::string before = "// mine\r\na: 2\r\nown: 9\r\n";
    Open("a: 1\r\n", before);
    Type("txtActualValue", "3");
    messages_.Answer({Button::kNo});
    Press("cmdApply");
    QCOMPARE(ReadFile(*folder_ / "a.conf"), before);
    QCOMPARE(ToQString(messages_.lastDetails), "- a: 2\r\n+ a: 3\r\n- own: 9\r\n- // (1)\r\n");
    QCOMPARE(Applied(), "a: 3\r\n");
    QVERIFY(!window_->isWindowModified());
    const QString apply = "[36] Apply Changes?\r\n\r\nComment lines that will be lost: 1";
    QCOMPARE(messages_.Take(), (QStringList{apply, apply, "[64] Saved!"}));

    merge_->SetValue(FileMerge::List::kKept, u"a", u"\u4E2D");
    QCOMPARE(Applied(), "a: 3\r\n");
    QVERIFY(messages_.Take().last().contains(" lacks."));
    Type("txtActualValue", "4");
    std::filesystem::remove_all(folder_->Folder());
    messages_.Answer({Button::kYes});  // to save over what has changed on the disk
    Applied();
    QVERIFY(messages_.Take().last().startsWith("[0] Error: "));
    QCOMPARE(window_->Changed(), 2);
    messages_.Answer({Button::kNo, Button::kNo, Button::kNo, Button::kYes});
    window_->close();
    Keys("Esc");
    for (const bool stays : {true, false}) {
      Press("cmdClose");
      QCOMPARE(window_->isVisible(), stays);
    }
    QCOMPARE(messages_.Take(), QStringList(4, "[292] Ignore Changes?"));
  }

  void MovesKeepPlacesAndOtherTicks() {
    std::string dist, both;
    for (int i = 10; i < 80; ++i) {
      dist += "//n" + std::to_string(i) + ": 1\r\n";
      both += "b" + std::to_string(i) + ": 1\r\n";
    }
    Open(dist + both, both + "o1: 1\r\no2: 2\r\no3: 3\r\no4: 4\r\n");
    Click(kObsolete, 3, true);
    Click(kObsolete, 1);
    Click(kNew, 60);
    Press("cmdMove0");
    QCOMPARE(List(kNew)->currentItem()->text(), "n71");
    const QRect shown = List(kNew)->visualItemRect(List(kNew)->currentItem());
    QVERIFY(List(kNew)->viewport()->rect().contains(shown));
    Click(kNew, 68);  // the last one
    Press("cmdMove0");
    Pages()->setCurrentIndex(1);
    Click(kKept, 0, true);
    Pages()->setCurrentIndex(0);
    Press("cmdMove2");
    QCOMPARE(List(kKept)->item(0)->checkState(), Qt::Checked);
    QCOMPARE(Items(kObsolete), "o1 o2 o3");
    QCOMPARE(List(kObsolete)->currentRow(), 1);
    QCOMPARE(List(kNew)->currentRow(), 67);

    List(kNew)->verticalScrollBar()->setValue(List(kNew)->verticalScrollBar()->maximum() / 2);
    const QString top = List(kNew)->itemAt(5, 5)->text();
    Click(kObsolete, 1, true);
    Press("cmdMove2");
    QCOMPARE(List(kNew)->itemAt(5, 5)->text(), top);
  }

  void ValuesCanBeTakenBackAndAreMarked() {
    Open("a: 1\r\nb: 2\r\nn: 3\r\nm: 4\r\n", "a: 1\r\nb: 2\r\n");
    for (const int page : {0, 1}) {
      Pages()->setCurrentIndex(page);
      const char* const name = page == 0 ? "txtOriginalValue" : "txtActualValue";
      const auto* const editor = Find<QLineEdit>(name);
      Type(name, "p//q");
      QCOMPARE(editor->toolTip(), "This will be read back as: p");
      Click(page, 1);
      Click(page, 0);
      Type(name, "r");
      QCOMPARE(editor->toolTip(), "");
      Keys("Esc");
      QCOMPARE(editor->text(), "p//q");  // since the setting was chosen
      QVERIFY(window_->isVisible());
    }
  }

  void HelpExplainsTheLists() {
    OpenSample();
    Press("cmdHelp0");
    Press("cmdHelp1");
    const auto help = [this](Message key) { return "[64] " + ToQString(language_.Text(key)); };
    QCOMPARE(messages_.Take(),
             (QStringList{help(Message::kNewSettingsHelp), help(Message::kObsoleteSettingsHelp)}));
  }

  void UndoesAndRedoesByKey() {
    OpenSample();
    const auto* const undo = Find<QAction>("Undo");
    const auto* const redo = Find<QAction>("Redo");
    Press("cmdSelectAll2");
    auto* const maps = Find<QListWidget>("lstSeries0");
    const auto state = [&] {
      return Lists().remove('+') + Items(maps) + Text("txtActualValue") +
             QString::fromStdString(Values(merge_->Tree(FileMerge::List::kNew)));
    };
    QStringList states{state()};
    for (const auto& step : std::initializer_list<std::function<void()>>{
             [this] { Type("txtOriginalValue", "x"); }, [this] { Press("cmdMove0"); },
             [this] { Type("txtActualValue", "x"); }, [this] { Press("cmdMove2"); },
             [maps] { QTest::keyClick(maps, Qt::Key_Space); }}) {
      step();
      states << state();
      QCOMPARE(window_->isWindowModified(), states.size() > 2);  // a new value is not saved
    }
    for (int i = 4; i >= 0; --i) {
      QVERIFY(undo->isEnabled());
      Keys("Ctrl+Z");
      QCOMPARE(state(), states[i]);
      QCOMPARE(window_->isWindowModified(), i > 1);
    }
    QVERIFY(!undo->isEnabled());
    Find<QLineEdit>("txtOriginalValue")->setFocus();
    Keys("Ctrl+Z");  // nothing, also not in the editor
    for (int i = 1; i <= 5; ++i) {
      QVERIFY(redo->isEnabled());
      Keys(i % 2 == 0 ? "Ctrl+Y" : "Ctrl+Shift+Z");
      QCOMPARE(state(), states[i]);
    }
    QVERIFY(!redo->isEnabled());
  }

  void UndoKeepsTicksAndFocusAndLeavesAnEmptyPage() {
    Open("a: 1\r\nb: 2\r\nc: 3\r\n//d: 4\r\n", "a: 1\r\nb: 2\r\nc: 3\r\nd: 4\r\n");
    QVERIFY(List(kKept)->hasFocus());
    Click(kKept, 3, true);
    Press("cmdMove1");
    Click(kKept, 0, true);
    Click(kKept, 2);
    for (const char* const focused : {"lstParameters2", "txtValue", "txtComments"}) {
      Pages()->setCurrentIndex(0);
      auto* const control = Find<QWidget>(focused);
      control->setFocus();
      QVERIFY(Pages()->isTabEnabled(0));
      Keys("Ctrl+Z");  // which leaves that page without settings
      QVERIFY(Pages()->currentIndex() == 1 && !Pages()->isTabEnabled(0));
      QCOMPARE(Items(kKept), "+a b c d");
      QCOMPARE(List(kKept)->currentRow(), 2);
      QCOMPARE(window_->focusWidget(), control->isVisible() ? control : List(kKept));
      Keys("Ctrl+Y");
      QCOMPARE(Items(kObsolete), "d");
    }
  }

  void WorksByKeyboardAlone() {
    OpenSample();
    Keys("Down Tab");
    QCOMPARE(window_->focusWidget()->objectName(), "cmdMove0");
    Keys("Return");
    QCOMPARE(Items(kKept), "keep free must may");
    Keys("Space");
    QVERIFY(!List(kNew)->isEnabled());
    QCOMPARE(window_->focusWidget(), List(kObsolete));  // and not whatever comes next
    QCOMPARE(Comment(), "Mine.");
    Keys("Space");
    QCOMPARE(Items(kObsolete), "+own old");
    QTest::keyClick(Find<QLineEdit>("txtActualValue"), Qt::Key_Return);
    QCOMPARE(messages_.Take(), {});
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::UpdaterTest)
#include "UpdaterTest.moc"

#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QScrollBar>
#include <QTimer>

#include "updater/OpenUpdater.h"

namespace quenmar {
namespace {

constexpr const char* kReleased =
    "net_port: 1\r\nneed: 2\r\n//may: 3\r\nsame: 4\r\nmine: 5\r\nquiet: 6\r\nnote: 7\r\n";
constexpr const char* kOwn =
    "same: 4\r\nmine: 50\r\n//quiet: 6\r\nnote: 7\r\nNet_Port: 10\r\n//old: 8\r\n";

}  // namespace

class UpdaterListsTest : public OpenUpdater {
  Q_OBJECT

 private slots:
  void init();
  void RowsSayWhatTheNamesDoNot_data();
  void RowsSayWhatTheNamesDoNot();
  void RowsFollowWhatIsTyped();
  void SettingsAreSwitched();
  void SeveralSettingsAreAddedAtOnce();
  void RenamedSettingsTakeTheOldValueOver();
  void MissingSettingsAreOfferedWithASave_data();
  void MissingSettingsAreOfferedWithASave();
  void ClosingNamesWhatWasNotAdded();
  void OnlyWhatIsShownMoves();
  void ChoicesShowWhatIsChangedOrCommentedOut();
  void ChangedDefaultsAreMarkedAndTaken();
  void MovesLeaveListsWhereTheyWere();
  void MenusOfferWhatKeysDo();

 private:
  QString Said(int list, int row) {
    return List(list)->item(row)->data(Qt::AccessibleDescriptionRole).toString();
  }
  QString Remark() { return Pages()->currentWidget()->findChild<QLabel*>("lblRemark")->text(); }
  QFont Font(int row) { return List(1)->item(row)->font(); }
  QString Shown(int list) {
    QStringList names;
    for (int i = 0; i < List(list)->count(); ++i) {
      if (!List(list)->item(i)->isHidden()) names << List(list)->item(i)->text();
    }
    return names.join(' ');
  }
  void Filter(const QString& text) {
    QTest::keySequence(window_->focusWidget(), QKeySequence::Find);
    Find<QLineEdit>("txtFind")->setText(text);
  }
};

void UpdaterListsTest::init() {
  window_.reset();
  folder_ = std::make_unique<ScratchFolder>();
  options_ = {};
  layout_ = Layout::kServer;
  messages_.Take();
}

void UpdaterListsTest::RowsSayWhatTheNamesDoNot_data() {
  QTest::addColumn<Layout>("layout");
  QTest::addColumn<QString>("state");
  QTest::newRow("lines kept") << Layout::kServer << "commented out";
  QTest::newRow("settings only") << Layout::kSettings << "commented out, becomes active when saved";
}

void UpdaterListsTest::RowsSayWhatTheNamesDoNot() {
  QFETCH(Layout, layout);
  QFETCH(QString, state);
  layout_ = layout;
  Open(kReleased, kOwn);
  QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(List(0));
  const auto* const cell = spoken->tableInterface()->cellAt(0, 0);
  QCOMPARE(cell->text(QAccessible::Name), "net_port");
  QCOMPARE(cell->text(QAccessible::Description), "1; perhaps renamed from Net_Port");
  QCOMPARE(Remark(), "perhaps renamed from Net_Port");
  QCOMPARE(Said(0, 1), "2");
  QCOMPARE(Said(1, 0), "4");
  QCOMPARE(Said(1, 1), "50; Original Value: 5");
  QCOMPARE(Said(1, 2), "6; " + state);
  QCOMPARE(Said(2, 1), "8; " + state);
  QCOMPARE(List(2)->item(1)->toolTip(), "old: 8\n" + state);
  QVERIFY(!Font(0).bold() && Font(1).bold() && !Font(2).bold());
}

void UpdaterListsTest::RowsFollowWhatIsTyped() {
  Open(kReleased, kOwn);
  Type("txtOriginalValue", "1000");
  QCOMPARE(Said(0, 0), "1000; perhaps renamed from Net_Port");
  Pages()->setCurrentIndex(1);
  Click(List(1), 2);
  QCOMPARE(Remark(), "commented out");
  Type("txtActualValue", "60");
  QCOMPARE(Said(1, 2), "60; Original Value: 6; commented out, becomes active when saved");
  QVERIFY(Font(2).bold());
  QTest::keySequence(window_->focusWidget(), QKeySequence::Undo);
  QCOMPARE(Said(1, 2), "6; commented out");
  QVERIFY(!Font(2).bold());
}

void UpdaterListsTest::SettingsAreSwitched() {
  Open(kReleased, kOwn);
  const auto* const action = Find<QAction>("Switch");
  const auto press = [this] { QTest::keySequence(window_->focusWidget(), QKeySequence("Ctrl+T")); };
  QVERIFY(!action->isEnabled());  // a new setting is added or not
  Pages()->setCurrentIndex(1);
  press();
  QCOMPARE(Said(1, 0), "4; commented out");
  QCOMPARE(window_->Changed(), 8);
  Click(List(1), 3);
  press();
  QCOMPARE(messages_.Take(),
           {"[64] The setting note cannot be commented out: it would be a comment."});
  Click(List(1), 2);
  press();
  QVERIFY(Applied().starts_with("//same: 4\r\nmine: 50\r\nquiet: 6\r\nnote: 7\r\n"));
  QCOMPARE(Said(1, 2), "6");
  layout_ = Layout::kSettings;
  Open(kReleased, kOwn);
  Pages()->setCurrentIndex(1);
  QVERIFY(!Find<QAction>("Switch")->isEnabled());
}

void UpdaterListsTest::SeveralSettingsAreAddedAtOnce() {
  Open(kReleased, kOwn);
  Click(List(0), 0);
  QTest::mouseClick(List(0)->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    List(0)->visualItemRect(List(0)->item(2)).center());
  Press("cmdMove0");
  QCOMPARE(Items(0), "+need");
  QTest::keySequence(window_->focusWidget(), QKeySequence::Undo);
  QCOMPARE(Items(0), "+net_port +need may");
  Press("cmdAddMandatory");
  QCOMPARE(Items(0), "may");
  QVERIFY(!Find<QPushButton>("cmdAddMandatory")->isEnabled());
  QTest::keySequence(window_->focusWidget(), QKeySequence::Undo);
  Press("cmdSelectAll0");
  QCOMPARE(List(0)->selectedItems().size(), 3);
  Press("cmdMove0");
  QCOMPARE(Items(1), "same mine quiet note net_port need may");
}

void UpdaterListsTest::RenamedSettingsTakeTheOldValueOver() {
  Open(kReleased, kOwn);
  auto* const button = Find<QPushButton>("cmdTakeOldValue");
  QVERIFY(button->isEnabled() && button->toolTip().endsWith("Ctrl+O"));
  Click(List(0), 1);
  QVERIFY(!button->isEnabled());
  Click(List(0), 0);
  Press("cmdTakeOldValue");
  QCOMPARE(Items(0), "+need may");
  QCOMPARE(Said(1, 4), "10; Original Value: 1");
  QTest::keySequence(window_->focusWidget(), QKeySequence::Undo);
  QCOMPARE(Said(0, 0), "1; perhaps renamed from Net_Port");
}

void UpdaterListsTest::MissingSettingsAreOfferedWithASave_data() {
  QTest::addColumn<Button>("answer");
  QTest::addColumn<QString>("kept");
  QTest::newRow("taken") << Button::kOffer << "same mine quiet note net_port need";
  QTest::newRow("left") << Button::kYes << "same mine quiet note";
}

void UpdaterListsTest::MissingSettingsAreOfferedWithASave() {
  QFETCH(Button, answer);
  Open(kReleased, kOwn);
  messages_.Answer({answer});
  if (answer == Button::kOffer) messages_.Answer({Button::kYes});
  Press("cmdApply");
  QTEST(Items(1), "kept");
  QVERIFY(ReadFile(*folder_ / "a.conf") != kOwn);
  QCOMPARE(messages_.Take().size(), answer == Button::kOffer ? 3 : 2);
}

void UpdaterListsTest::ClosingNamesWhatWasNotAdded() {
  Open(kReleased, kOwn);
  Click(List(0), 2);
  Press("cmdMove0");
  for (int row = 0; row < 2; ++row) {
    Click(List(0), row);
    Type("txtOriginalValue", "x");
  }
  messages_.Answer({Button::kNo});
  Press("cmdClose");
  QCOMPARE(
      messages_.Take(),
      {"[292] Ignore Changes?\r\n\r\nNew values that were typed and not added: net_port, need"});
}

void UpdaterListsTest::OnlyWhatIsShownMoves() {
  Open(kReleased, kOwn);
  Press("cmdSelectAll2");
  Filter("OLD");
  QCOMPARE(Shown(2), "old");
  QCOMPARE(Shown(0), "");
  QCOMPARE(Find<QLabel>("lblFind")->text(), "1 of 5");
  QVERIFY(!Find<QPushButton>("cmdMove0")->isEnabled());
  QVERIFY(!Find<QLineEdit>("txtOriginalValue")->isEnabled());
  Press("cmdMove2");
  QCOMPARE(Items(1), "same mine quiet note old");
  Filter("net");
  QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
  QVERIFY(List(0)->hasFocus() || List(2)->hasFocus());
  QTest::keyClick(window_->focusWidget(), Qt::Key_Escape);
  QVERIFY(window_->isVisible());
  QCOMPARE(Shown(0), "net_port need may");
  QCOMPARE(Items(2), "+Net_Port");
}

void UpdaterListsTest::ChoicesShowWhatIsChangedOrCommentedOut() {
  WriteFile(*folder_ / "old", "mine: 4\r\nquiet: 5\r\n");
  Open(kReleased, kOwn);
  Pages()->setCurrentIndex(1);
  Filter("");
  auto* const choices = Find<QComboBox>("cmbFind");
  const QStringList shown{"same mine quiet note", "mine", "mine", "quiet"};
  QCOMPARE(choices->count(), shown.size());
  for (int choice = 0; choice < choices->count(); ++choice) {
    choices->setCurrentIndex(choice);
    QCOMPARE(Shown(1), shown[choice]);
    QVERIFY(List(1)->currentItem() != nullptr && !List(1)->currentItem()->isHidden());
  }
}

void UpdaterListsTest::ChangedDefaultsAreMarkedAndTaken() {
  WriteFile(*folder_ / "old", "same: 4\r\nmine: 3\r\nrate: 1\r\nfast: 1\r\n");
  const std::string own = "same: 4\r\nmine: 50\r\n//rate: 1\r\nfast: 1\r\n";
  Open("same: 4\r\nmine: 5\r\nrate: 2\r\nfast: 2\r\n", own);
  Pages()->setCurrentIndex(1);
  const QString both = "you and the release have both changed this; Old default: 3; New default: 5";
  const QString untouched = "the release has changed this default; Old default: 1; New default: 2";
  const QStringList said{"4", "50; Original Value: 5; " + both,
                         "1; Original Value: 2; " + untouched + "; commented out",
                         "1; Original Value: 2; " + untouched};
  for (int row = 0; row < 4; ++row) QCOMPARE(Said(1, row), said[row]);
  QVERIFY(!Find<QPushButton>("cmdTakeNewDefault")->isEnabled());
  Filter("");
  Find<QComboBox>("cmbFind")->setCurrentIndex(2);
  QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
  QCOMPARE(Remark(), both);
  const auto undo = [this] { QTest::keySequence(window_->focusWidget(), QKeySequence::Undo); };
  const std::initializer_list<std::pair<std::function<void()>, const char*>> ways{
      {[&] { Press("cmdTakeNewDefault"); }, "rate fast"},
      {[&] { Press("cmdTakeAllDefaults"); }, "mine"},
      {[&] {
         QTest::keySequence(List(1), QKeySequence::SelectAll);
         QTest::keySequence(List(1), QKeySequence("Ctrl+D"));
       },
       ""},
      {[&] { QTest::keySequence(List(1), QKeySequence("Ctrl+Shift+D")); }, "mine"}};
  for (const auto& [take, left] : ways) {
    QCOMPARE(Shown(1), "mine rate fast");
    take();
    QCOMPARE(Shown(1), left);
    undo();
    QCOMPARE(window_->Changed(), 0);
  }
  Press("cmdTakeAllDefaults");
  QVERIFY(!Find<QPushButton>("cmdTakeAllDefaults")->isEnabled());
  QCOMPARE(Applied(), "same: 4\r\nmine: 50\r\n//rate: 2\r\nfast: 2\r\n");
}

void UpdaterListsTest::MovesLeaveListsWhereTheyWere() {
  std::string released, own;
  for (int i = 10; i < 90; ++i) {
    released += "n" + std::to_string(i) + ": 1\r\n";
    own += "o" + std::to_string(i) + ": 2\r\n";
  }
  Open(released, own);
  auto* const bar = List(0)->verticalScrollBar();
  bar->setValue(bar->maximum() / 2);
  const QString top = List(0)->itemAt(5, 5)->text();
  Click(List(2), 1, true);
  Press("cmdMove2");
  QCOMPARE(List(0)->itemAt(5, 5)->text(), top);
}

void UpdaterListsTest::MenusOfferWhatKeysDo() {
  Open(kReleased, kOwn);
  const QStringList offered{"TakeOldValue AddMandatory  Find",
                            "Switch TakeNewDefault TakeAllDefaults  Find", "Switch  Find"};
  for (const int list : {0, 2, 1}) {
    Pages()->setCurrentIndex(list == 1 ? 1 : 0);
    QStringList names;
    QTimer::singleShot(0, window_.get(), [&names] {
      QWidget* const menu = QApplication::activePopupWidget();
      for (const QAction* const action : menu->actions()) names << action->objectName();
      menu->close();
    });
    emit List(list)->customContextMenuRequested(QPoint(5, 5));
    QCOMPARE(names.join(' '), offered[list]);
  }
}

}  // namespace quenmar

QTEST_MAIN(quenmar::UpdaterListsTest)
#include "UpdaterListsTest.moc"

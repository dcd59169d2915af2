#include "updater/OpenUpdater.h"
#include "widgets/SeriesTabs.h"

namespace quenmar {
namespace {

constexpr const char* kReleased =
    "net_port: 1\r\nneed: 2\r\n//may: 3\r\nsame: 4\r\nmine: 5\r\nquiet: 6\r\nnote: 7\r\n";
constexpr const char* kOwn =
    "same: 4\r\nmine: 50\r\n//quiet: 6\r\nnote: 7\r\nNet_Port: 10\r\n//old: 8\r\n";

}  // namespace

class UpdaterListsTest : public OpenUpdater {
  Q_OBJECT

  void OpenOwn(Layout layout = Layout::kServer, std::string_view old = {}) {
    Open(kReleased, kOwn, layout, old);
  }
  QString Said(int list, int row) {
    return List(list)->item(row)->data(Qt::AccessibleDescriptionRole).toString();
  }
  /// @return what is said about the rows of a list but for "Mandatory" and "Optional", joined by
  /// "|".
  QString Said(int list) {
    QStringList rows;
    for (int row = 0; row < List(list)->count(); ++row) {
      rows << Said(list, row).remove("; Mandatory").remove("; Optional");
    }
    return rows.join('|');
  }
  QString Remark() { return Label("lblRemark"); }
  bool IsBold(int row) { return List(kKept)->item(row)->font().bold(); }
  void Filter(const QString& text) {
    Keys("Ctrl+F");
    Find<QLineEdit>("txtFind")->setText(text);
  }

 private slots:
  void RowsSayWhatTheNamesDoNot() {
    for (const Layout layout : {Layout::kServer, Layout::kSettings}) {
      const QString state =
          layout == Layout::kServer ? "commented out" : "commented out, becomes active when saved";
      OpenOwn(layout);
      QCOMPARE(Remark(), "perhaps renamed from Net_Port");
      QCOMPARE(Said(kNew), "1; perhaps renamed from Net_Port|2|3");
      QCOMPARE(Said(kKept), "4|50; Original Value: 5|6; " + state + "|7");
      QCOMPARE(Said(kObsolete), "10|8; " + state);
      QCOMPARE(Said(kNew, 1) + ' ' + Said(kKept, 0) + ' ' + Said(kObsolete, 0),
               "2 4; Mandatory 10; Optional");
      QCOMPARE(List(kObsolete)->item(1)->toolTip(), "old: 8\n" + state);
      QVERIFY(!IsBold(0) && IsBold(1) && !IsBold(2));
    }
  }

  void RowsFollowWhatIsTyped() {
    OpenOwn();
    Type("txtOriginalValue", "1000");
    QCOMPARE(Said(kNew), "1000; perhaps renamed from Net_Port|2|3");
    Pages()->setCurrentIndex(1);
    Click(kKept, 2);
    QCOMPARE(Remark(), "commented out");
    Type("txtActualValue", "60");
    QCOMPARE(Said(kKept),
             "4|50; Original Value: 5|60; Original Value: 6; commented out, becomes active when "
             "saved|7");
    QVERIFY(IsBold(2));
  }

  void SettingsAreSwitched() {
    OpenOwn();
    const auto* const action = Find<QAction>("Switch");
    QVERIFY(!action->isEnabled());  // a new setting is added or not
    Pages()->setCurrentIndex(1);
    List(kKept)->setFocus();
    Keys("Ctrl+T");
    QVERIFY(Said(kKept).startsWith("4; commented out|"));
    QCOMPARE(window_->Changed(), 8);
    Keys("Ctrl+A Ctrl+T");
    QCOMPARE(Said(kKept), "4|50; Original Value: 5|6; commented out, becomes active when saved|7");
    Keys("Ctrl+T");
    QCOMPARE(List(kKept)->selectedItems().size(), 4);
    QCOMPARE(messages_.Take(),
             {"[64] The setting note cannot be commented out: it would be a comment."});
    Click(kKept, 2);
    Keys("Ctrl+T");
    QVERIFY(Applied().starts_with("//same: 4\r\n//mine: 50\r\nquiet: 6\r\nnote: 7\r\n"));
    QCOMPARE(Said(kKept), "4; commented out|50; Original Value: 5; commented out|6|7");
    OpenOwn(Layout::kSettings);
    Pages()->setCurrentIndex(1);
    QVERIFY(!Find<QAction>("Switch")->isEnabled());
  }

  void SeveralSettingsAreAddedAtOnce() {
    OpenOwn();
    Click(kNew, 0);
    QTest::mouseClick(List(kNew)->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      List(kNew)->visualItemRect(List(kNew)->item(2)).center());
    Press("cmdMove0");
    QCOMPARE(Items(kNew), "+need");
    Keys("Ctrl+Z");
    QCOMPARE(Items(kNew), "+net_port +need may");
    Press("cmdAddMandatory");
    QCOMPARE(Items(kNew), "may");
    QVERIFY(!IsEnabled("cmdAddMandatory"));
    QVERIFY(Find<QWidget>("cmdAddMandatory")->accessibleDescription().startsWith("[x] New"));
    Keys("Ctrl+Z");
    Press("cmdSelectAll0");
    Press("cmdMove0");
    QCOMPARE(Items(kKept), "same mine quiet note net_port need may");
  }

  void RenamedSettingsTakeTheOldValueOver() {
    OpenOwn();
    QVERIFY(IsEnabled("cmdTakeOldValue"));
    QVERIFY(Find<QPushButton>("cmdTakeOldValue")->toolTip().endsWith("Ctrl+O"));
    Click(kNew, 1);
    QVERIFY(!IsEnabled("cmdTakeOldValue"));
    Click(kNew, 0);
    Press("cmdTakeOldValue");
    QCOMPARE(Items(kNew), "+need may");
    QVERIFY(Said(kKept).endsWith("|10; Original Value: 1"));
    Keys("Ctrl+Z");
    QVERIFY(Said(kNew).startsWith("1; perhaps renamed from Net_Port|"));
  }

  void MissingSettingsAreOfferedWithASave() {
    for (const bool taken : {true, false}) {
      OpenOwn();
      if (taken) messages_.Answer({Button::kOffer});
      Applied();
      QCOMPARE(Items(kKept), QString("same mine quiet note") + (taken ? " net_port need" : ""));
      QCOMPARE(messages_.Take().size(), taken ? 3 : 2);
    }
  }

  void ClosingNamesWhatWasNotAdded() {
    OpenOwn();
    Click(kNew, 2);
    Press("cmdMove0");
    for (const int row : {0, 1}) {
      Click(kNew, row);
      Type("txtOriginalValue", "x");
    }
    messages_.Answer({Button::kNo});
    Press("cmdClose");
    QVERIFY(messages_.Take().first().endsWith(
        "\r\n\r\nNew values that were typed and not added: net_port, need"));
  }

  void TheListInUseIsHighlighted() {
    OpenOwn();
    const auto highlight = [this](int list) {
      const QRect row = List(list)->visualItemRect(List(list)->currentItem());
      return List(list)->viewport()->grab().toImage().pixelColor(row.bottomRight());
    };
    const QColor strong = highlight(kNew);
    QVERIFY(highlight(kObsolete) != strong);
    Click(kObsolete, 0);
    QVERIFY(highlight(kObsolete) == strong && highlight(kNew) != strong);
  }

  void OnlyWhatIsShownMoves() {
    OpenOwn();
    Press("cmdSelectAll2");
    Filter("OLD");
    QCOMPARE(Items(kObsolete), "+old");
    QCOMPARE(Items(kNew), "");
    QCOMPARE(Find<QLabel>("lblFind")->text(), "1 of 5");
    QVERIFY(!IsEnabled("cmdMove0") && !IsEnabled("txtOriginalValue"));
    Press("cmdMove2");
    Filter("net");
    Keys("Return");
    QVERIFY(List(kNew)->hasFocus() || List(kObsolete)->hasFocus());
    Keys("Esc");
    QVERIFY(window_->isVisible());
    QCOMPARE(Lists(), "+net_port +need may | same mine quiet note old | +Net_Port");
  }

  void ChoicesShowWhatIsChangedOrCommentedOut() {
    OpenOwn(Layout::kServer, "mine: 4\r\nquiet: 5\r\n");
    Pages()->setCurrentIndex(1);
    Filter("");
    auto* const choices = Find<QComboBox>("cmbFind");
    const QStringList shown{"same mine quiet note", "mine", "mine", "quiet"};
    QCOMPARE(choices->count(), shown.size());
    for (int choice = 0; choice < choices->count(); ++choice) {
      choices->setCurrentIndex(choice);
      QCOMPARE(Items(kKept), shown[choice]);
      QVERIFY(!List(kKept)->currentItem()->isHidden());
    }
    choices->setCurrentIndex(1);
    messages_.Answer({Button::kYes});
    Click(kKept, 1, true);
    Press("cmdMove1");
    QCOMPARE(Items(kObsolete), "mine");  // still changed
  }

  void ChangedDefaultsAreMarkedAndTaken() {
    Open("same: 4\r\nmine: 5\r\nrate: 2\r\nfast: 2\r\n",
         "same: 4\r\nmine: 50\r\n//rate: 1\r\nfast: 1\r\n", Layout::kServer,
         "same: 4\r\nmine: 3\r\nrate: 1\r\nfast: 1\r\n");
    Pages()->setCurrentIndex(1);
    const QString both =
        "you and the release have both changed this; Old default: 3; New default: 5";
    const QString untouched =
        "the release has changed this default; Old default: 1; New default: 2";
    QCOMPARE(Said(kKept), "4|50; Original Value: 5; " + both + "|1; Original Value: 2; " +
                              untouched + "; commented out|1; Original Value: 2; " + untouched);
    QVERIFY(!IsEnabled("cmdTakeNewDefault"));
    QCOMPARE(Find<QWidget>("cmdTakeNewDefault")->accessibleDescription(), "Parameters:");
    Filter("");
    Find<QComboBox>("cmbFind")->setCurrentIndex(2);
    Keys("Return");
    QCOMPARE(Remark(), both);
    const std::pair<std::function<void()>, const char*> ways[] = {
        {[this] { Press("cmdTakeNewDefault"); }, "rate fast"},
        {[this] { Press("cmdTakeAllDefaults"); }, "mine"},
        {[this] { Keys("Ctrl+A Ctrl+D"); }, ""},
        {[this] { Keys("Ctrl+Shift+D"); }, "mine"}};
    for (const auto& [take, left] : ways) {
      QCOMPARE(Items(kKept), "mine rate fast");
      List(kKept)->setFocus();
      take();
      QCOMPARE(Items(kKept), left);
      Keys("Ctrl+Z");
      QCOMPARE(window_->Changed(), 0);
    }
    Press("cmdTakeAllDefaults");
    QVERIFY(!IsEnabled("cmdTakeAllDefaults"));
  }

  void WithdrawnEntriesAreMarked() {
    Open("map: b\r\n", "map: a\r\nmap: own\r\n", Layout::kServer, "map: a\r\nmap: b\r\n");
    auto* const maps = Find<QListWidget>("lstSeries0");
    QCOMPARE(Items(maps), QString("+a  \u25CB +own b"));
    QCOMPARE(maps->item(0)->toolTip(), "the release has withdrawn this entry");
    const auto* const tabs = Find<SeriesTabs>("TSeries");
    QVERIFY(tabs->Item(0, 0) == u"a");
    // Only what the user does is signalled.
    const QSignalSpy checked(tabs, &SeriesTabs::ItemChecked);
    const QSignalSpy selected(tabs, &SeriesTabs::ItemSelected);
    Click(maps, 1);
    Click(maps, 1, true);
    QCOMPARE(Items(maps), QString("+a  \u25CB own b"));
    Click(maps, 0, true);
    QCOMPARE(Items(maps) + maps->item(0)->toolTip(), "a own b");
    Keys("Ctrl+Z Ctrl+Z");
    window_->FillSeries();
    QCOMPARE(Items(maps), QString("+a  \u25CB +own b"));
    QCOMPARE(checked.count(), 2);
    QCOMPARE(selected.count(), 1);
  }

  void MenusOfferWhatKeysDo() {
    OpenOwn();
    const std::initializer_list<std::pair<int, const char*>> menus = {
        {kNew, "TakeOldValue AddMandatory  Find"},
        {kObsolete, "Switch  Find"},
        {kKept, "Switch TakeNewDefault TakeAllDefaults  Find"}};
    for (const auto& [list, offered] : menus) {
      Pages()->setCurrentIndex(list == kKept ? 1 : 0);
      QCOMPARE(MenuOf(List(list)).join(' '), offered);
    }
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::UpdaterListsTest)
#include "UpdaterListsTest.moc"

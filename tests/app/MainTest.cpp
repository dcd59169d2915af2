#include <QCheckBox>
#include <QLabel>
#include <QTableView>
#include <QUrl>

#include "app/MainFixture.h"

namespace quenmar {

class MainTest : public MainFixture {
  Q_OBJECT

  static bool Busy() { return QApplication::overrideCursor() != nullptr; }
  static void Apply(QWidget* window) { window->findChild<QPushButton*>("cmdApply")->click(); }

 private slots:
  void TheChoiceOfALayoutIsStoredAndGreysTheSorting() {
    Register(u"Options", u"Sort", u"1");
    const std::pair<const char*, std::string> choices[] = {
        {"Keep this file's comments", "// mine\na: 2\n//npc: x\n"},
        {"New release's comments", "a: 2\r\n//npc: x\r\n"},
        {"Settings only", "a: 2\r\n//npc: x\r\n"}};
    for (const auto& [name, saved] : choices) {
      Write("conf/a.conf", "// mine\na: 2\n");
      OpenOnFolders("a.conf");
      QVERIFY(Get<QComboBox>("cmbLayout")->toolTip().contains(QString(name) + ": "));
      Get<QComboBox>("cmbLayout")->setCurrentText(name);
      // Only the program's own form is sorted and needs other line ends, for which it asks.
      const bool own = name == choices[2].first;
      if (own) messages_.Answer({Button::kYes});
      messages_.Answer({Button::kYes});
      PressAndClose("Command5", Apply);
      QCOMPARE(messages_.Take().first().contains("do you want to fix?"), own);
      QCOMPARE(Read("conf/a.conf"), saved);
      for (const bool again : {false, true}) {
        if (again) OpenOnFolders();
        QCOMPARE(Get<QComboBox>("cmbLayout")->currentText(), name);
        QVERIFY(Get<QCheckBox>("Check1")->isChecked());
        QCOMPARE(Get<QCheckBox>("Check1")->isEnabled(), own);
      }
    }
  }

  void CommandsNeedAFileThatBothFoldersHave() {
    OpenOnFolders();
    Click("Command3");
    Get<QPushButton>("Command5")->setFocus();
    QTest::keyClick(window_.get(), Qt::Key_Return);
    QCOMPARE(messages_.Take(), QStringList(2, "[0] Select a config file from the list."));
    Files()->setCurrentText("NEW.CONF");
    Click("Command3");
    QCOMPARE(messages_.Take(), {"[0] The NEW.CONF file is not found in you game folder, please use "
                                "Check Changes"});
#ifndef Q_OS_WIN
    // A server's file that is the distribution's by a link must not be written.
    std::filesystem::create_symlink("../dist/NEW.CONF", *scratch_ / "conf/NEW.CONF");
    Click("Command3");
    QCOMPARE(messages_.Take(), {"[0] Please, don't select the same folder."});
#endif
  }

  void ALookThatLeavesNothingToDoRemembersTheRelease() {
    const SeenFiles seen(*scratch_ / "state");
    OpenOnFolders("a.conf");
    for (const char* const command : {"Command3", "Command5"}) {
      QVERIFY(!seen.Find(*scratch_ / "conf/a.conf"));
      PressAndClose(command);
    }
    QVERIFY(seen.Find(*scratch_ / "conf/a.conf"));
  }

  void CheckChangesCopiesWhatTheServerLacks() {
    OpenOnFolders("NEW.CONF");
    messages_.Answer({Button::kNo});
    Click("Command5");
    QCOMPARE(messages_.Take(), {"[36] The NEW.CONF file is a new config file, copy in your project "
                                "config folder?"});
    QVERIFY(!std::filesystem::exists(*scratch_ / "conf/NEW.CONF"));
#ifndef Q_OS_WIN
    // A link is the server's own file, also where it leads nowhere.
    std::filesystem::create_symlink("../file", *scratch_ / "conf/NEW.CONF");
    Click("Command5");
    QVERIFY(messages_.Take().join('|').startsWith("[0] Error: ") && !Busy());
    std::filesystem::remove(*scratch_ / "conf/NEW.CONF");
#endif
    // What is begun from the distribution's file costs no copy of an earlier one.
    Write("dist/NEW.CONF", "// x\r\nn: 1\r\n");
    Write("conf/NEW.CONF.bak", "precious");
    messages_.Answer({Button::kYes, Button::kYes});
    QVERIFY(PressAndClose("Command5", Apply).startsWith("Check Changes - NEW.CONF"));
    QCOMPARE(Read("conf/NEW.CONF.bak") + Read("conf/NEW.CONF"), "preciousn: 1\r\n");
  }

  void WindowsFitOnASmallScreen() {
    const QSize small(500, 340);  // 1024 x 768 at twice the size, less the frame
    OpenOnFolders("a.conf");
    window_->resize(small);
    QCOMPARE(window_->size(), small);
    PressAndClose("Command5", [small](QWidget* window) {
      QVERIFY(!Busy());
      window->resize(small);
      QCOMPARE(window->size(), small);
      QCoreApplication::processEvents();
      window->findChild<QLabel*>("lblCheckHint")->setText("A hint so long that it wraps, and more");
      QCoreApplication::processEvents();
      for (const char* const name : {"cmdMove0", "cmdSelectAll0", "cmdHelp0"}) {
        const auto* const button = window->findChild<QPushButton*>(name);
        QVERIFY2(button->height() >= button->sizeHint().height(), name);
      }
      const auto* const apply = window->findChild<QPushButton*>("cmdApply");
      QVERIFY(window->rect().contains(QRect(apply->mapTo(window, QPoint()), apply->size())));
    });
  }

  /// On systems whose names are bytes, these may be no text.
  void NamesKeepTheirBytes() {
#ifndef Q_OS_LINUX
    QSKIP("Names are text here.");
#endif
    const Path name("caf\xE9.conf");
    Write("d\xE9" / name, "a: 1\r\n");
    OpenOnFolders();
    Drop(From(), QUrl::fromLocalFile(Folder("d")).toEncoded() + "%E9");
    QCOMPARE(Files()->count(), 1);
    Files()->setCurrentIndex(0);
    QCOMPARE(FromQString(Files()->currentText()), PathText(name));
    messages_.Answer({Button::kYes});
    QVERIFY(PressAndClose("Command5").contains(Files()->currentText()));
    QVERIFY(std::filesystem::exists(*scratch_ / "conf" / name));
    QVERIFY(PressAndClose("Command3").contains(Files()->currentText()));
  }

  void AFailedReadingOpensNothing() {
    Write("conf/a.conf", "a: 1\r\na: 2\r\n");
    std::filesystem::create_directory(*scratch_ / "conf/NEW.CONF");  // a folder in a file's place
    OpenOnFolders();
    messages_.Answer({Button::kNo, Button::kNo});
    for (const auto& [file, said] : {std::pair("a.conf", "dupl"), std::pair("NEW.CONF", "Error")}) {
      Files()->setCurrentText(file);
      for (const char* const command : {"Command3", "Command5"}) {
        Click(command);
        QVERIFY(messages_.Busy() && !Busy());
        const QStringList shown = messages_.Take();
        QVERIFY2(shown.size() == 1 && shown.first().contains(said), qPrintable(shown.join('\n')));
      }
    }
  }

  void TheChoiceToSortOutlivesTheApplication() {
    Write("conf/a.conf", "b: 1\r\na: 2\r\n");
    for (const char* const first : {"b", "a"}) {
      OpenOnFolders("a.conf");
      const QString title = PressAndClose("Command3", [first](QWidget* window) {
        const auto* const cells = window->findChild<QTableView*>("xEDG")->model();
        QCOMPARE(cells->index(0, 0).data().toString(), first);
        QVERIFY(!Busy());
      });
      QVERIFY(title.startsWith("Editing a.conf") && !Busy());
      Get<QCheckBox>("Check1")->click();
      QVERIFY(PressEnds("Command4"));
    }
  }

  void BareLineFeedsThatStayEndTheApplication() {
    Write("conf/a.conf", "a: 2\n");
    for (const char* const command : {"Command3", "Command5"}) {
      OpenOnFolders("a.conf");
      messages_.Answer({Button::kNo});
      QVERIFY(PressEnds(command) && !Busy());
    }
  }

  void TabFollowsTheOrderOfUse() {
    OpenOnFolders();
    QStringList order;
    const QWidget* control = From();
    do {
      const bool stop = (control->focusPolicy() & Qt::TabFocus) != 0;
      if (stop && !control->objectName().isEmpty()) order << control->objectName();
      control = control->nextInFocusChain();
    } while (control != From());
    QCOMPARE(order,
             QStringList({"txt_FileFrom", "Command1", "txt_FileTo", "Command2", "ConfFiles",
                          "Command3", "Command5", "Command4", "Check1", "cmbLayout", "tblFiles"}));
  }

  void CaptionsAreShownLetterForLetter() {
    Register(u"Language", u"LNG8", u"&A");
    language_ = Language::LoadLanguage(*registry_);
    Open();
    QCOMPARE(Get<QPushButton>("Command3")->text(), "&&A");
    QCOMPARE(Get<QCheckBox>("Check1")->text(), "Select a config file from the list.");
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::MainTest)
#include "MainTest.moc"
#include "moc_MainFixture.cpp"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTableView>
#include <QUrl>

#include "app/MainFixture.h"

namespace quenmar {

class MainTest : public MainFixture {
  Q_OBJECT

  static bool Busy() { return QApplication::overrideCursor() != nullptr; }
  [[nodiscard]] std::string Server(const char* file = "a.conf") const {
    return ReadFile(*scratch_ / "conf" / file);
  }

 private slots:
  void TheChoiceToSortOutlivesTheApplication() {
    Open();
    QVERIFY(!Get<QCheckBox>("Check1")->isChecked());
    Get<QCheckBox>("Check1")->click();
    QVERIFY(PressEnds("Command4"));
    Open();
    QVERIFY(Get<QCheckBox>("Check1")->isChecked());
  }

  void TheChoiceOfALayoutIsStoredAndGreysTheSorting() {
    registry_->RegWriteString(RegistryRoot::kLocalMachine, u"Software\\Quenmar\\Options", u"Sort",
                              u"1");
    WriteFile(*scratch_ / "conf/a.conf", "// mine\na: 2\n");
    const std::initializer_list<std::tuple<const char*, Layout, std::string>> choices = {
        {"Keep this file's comments", Layout::kServer, "// mine\na: 2\n//npc: x\n"},
        {"New release's comments", Layout::kDistribution, "a: 2\r\n//npc: x\r\n"},
        {"Settings only", Layout::kSettings, "a: 2\r\n//npc: x\r\n"}};
    for (const auto& [name, layout, saved] : choices) {
      OpenOnFolders("a.conf");
      Get<QComboBox>("cmbLayout")->setCurrentText(name);
      QVERIFY(Get<QComboBox>("cmbLayout")->toolTip().contains(QString(name) + ": "));
      QCOMPARE(LoadOptions(*registry_).layout, layout);
      OpenOnFolders("a.conf");
      QCOMPARE(Get<QComboBox>("cmbLayout")->currentText(), QString(name));
      const auto* const sort = Get<QCheckBox>("Check1");
      QVERIFY(sort->isChecked() && sort->isEnabled() == (layout == Layout::kSettings));

      // Only the program's own form needs other line ends, and asks.
      WriteFile(*scratch_ / "conf/a.conf", "// mine\na: 2\n");
      const bool repairs = layout == Layout::kSettings;
      if (repairs) messages_.Answer({Button::kYes});
      messages_.Answer({Button::kYes});
      const auto apply = [](QWidget* win) { win->findChild<QPushButton*>("cmdApply")->click(); };
      QVERIFY(PressAndClose("Command5", apply).contains("a.conf"));
      QCOMPARE(messages_.Take().first().contains("do you want to fix?"), repairs);
      QCOMPARE(Server(), saved);
    }
  }

  void CommandsNeedAFileThatBothFoldersHave() {
    const QString select = "[0] Select a config file from the list.";
    OpenOnFolders();
    Click("Command3");
    Click("Command5");
    Files()->setCurrentText("NEW.CONF");
    Click("Command3");
    QCOMPARE(messages_.Take(),
             QStringList({select, select,
                          "[0] The NEW.CONF file is not found in you game folder, please use "
                          "Check Changes"}));
#ifndef Q_OS_WIN
    // A server's file that is the distribution's by a link must not be written.
    std::filesystem::create_symlink("../dist/NEW.CONF", *scratch_ / "conf/NEW.CONF");
    Click("Command3");
    QCOMPARE(messages_.Take(), QStringList("[0] Please, don't select the same folder."));
#endif
  }

  void ReleasesAreToldApartAfterALookThatLeavesNothingToDo() {
    const SeenFiles seen(*scratch_ / "state");
    const Path server = *scratch_ / "conf/a.conf";
    OpenOnFolders("a.conf");
    PressAndClose("Command3");
    QVERIFY(!seen.Find(server));
    PressAndClose("Command5");
    QVERIFY(seen.Find(server) && seen.Find(server)->Bytes() == ReadFile(*scratch_ / "dist/a.conf"));
    WriteFile(*scratch_ / "dist/a.conf", "a: 3\r\n");
    PressAndClose("Command5");
    QVERIFY2(seen.Find(server)->Bytes() == "a: 1\r\nnpc: x\r\n", "there is something to do");
    QCOMPARE(messages_.Take(), QStringList());
  }

  void CheckChangesCopiesWhatTheServerLacks() {
    OpenOnFolders("NEW.CONF");
    messages_.Answer({Button::kNo});
    Click("Command5");
    QCOMPARE(messages_.Take(), QStringList("[36] The NEW.CONF file is a new config file, copy in "
                                           "your project config folder?"));
    QVERIFY(!std::filesystem::exists(*scratch_ / "conf/NEW.CONF"));
#ifndef Q_OS_WIN
    std::filesystem::create_symlink(*scratch_ / "nowhere/file", *scratch_ / "conf/NEW.CONF");
    messages_.Answer({Button::kYes});
    Click("Command5");
    QVERIFY(messages_.Take().last().startsWith("[0] Error: ") && !Busy());
    std::filesystem::remove(*scratch_ / "conf/NEW.CONF");
#endif
    // What is begun from the distribution's file costs no copy of an earlier one.
    WriteFile(*scratch_ / "dist/NEW.CONF", "// x\r\nn: 1\r\n");
    WriteFile(*scratch_ / "conf/NEW.CONF.bak", "precious");
    messages_.Answer({Button::kYes, Button::kYes});
    const auto apply = [](QWidget* win) { win->findChild<QPushButton*>("cmdApply")->click(); };
    QVERIFY(PressAndClose("Command5", apply).startsWith("Check Changes - NEW.CONF"));
    QCOMPARE(Server("NEW.CONF.bak") + Server("NEW.CONF"), std::string("preciousn: 1\r\n"));
  }

  void WindowsFitOnASmallScreen() {
    const QSize small(500, 340);  // 1024 x 768 at twice the size, less the frame
    OpenOnFolders("a.conf");
    window_->resize(small);
    QCOMPARE(window_->size(), small);
    PressAndClose("Command5", [small](QWidget* window) {
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
    std::filesystem::create_directory(*scratch_ / "d\xE9");
    WriteFile(*scratch_ / "d\xE9" / name, "a: 1\r\n");
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
    WriteFile(*scratch_ / "conf/a.conf", "a: 1\r\na: 2\r\n");
    std::filesystem::create_directory(*scratch_ / "conf/NEW.CONF");  // a folder in a file's place
    OpenOnFolders();
    messages_.Answer({Button::kNo, Button::kNo});
    for (const char* const file : {"a.conf", "NEW.CONF"}) {
      Files()->setCurrentText(file);
      for (const char* const command : {"Command3", "Command5"}) {
        Click(command);
        QVERIFY(messages_.Busy() && !Busy());
        const QStringList shown = messages_.Take();
        QVERIFY2(shown.size() == 1 &&
                     shown.first().contains(file == std::string("a.conf") ? "dupl" : "Error"),
                 qPrintable(shown.join('\n')));
      }
    }
  }

  void SortOrdersTheSettingsOfTheServer() {
    WriteFile(*scratch_ / "conf/a.conf", "b: 1\r\na: 2\r\nnpc: z\r\nnpc: y\r\n");
    OpenOnFolders("a.conf");
    for (const char* const sorted : {"bayzx", "abyzx"}) {
      const QString title = PressAndClose("Command3", [sorted](QWidget* window) {
        const auto* const cells = window->findChild<QTableView*>("xEDG")->model();
        QString names = cells->index(0, 0).data().toString() + cells->index(1, 0).data().toString();
        // Series are always sorted; what only the distribution has comes behind them.
        const auto* const entries = window->findChild<QListWidget*>("lstSeries0");
        for (int i = 0; i < entries->count(); ++i) names += entries->item(i)->text();
        QCOMPARE(names, QString(sorted));
      });
      QVERIFY(title.startsWith("Editing a.conf") && !Busy());
      Get<QCheckBox>("Check1")->click();
    }
  }

  void BareLineFeedsAreRepairedOrEndTheApplication() {
    const QStringList question(
        "[36] This file contain LF as line ending, do you want to fix? (This tool is compatible "
        "with CR+LF)\r\n" +
        ToQString(PathText((*scratch_ / "conf" / "a.conf").make_preferred())));
    for (const char* const command : {"Command3", "Command5"}) {
      WriteFile(*scratch_ / "conf/a.conf", "a: 2\nb: 3\n");
      OpenOnFolders("a.conf");
      messages_.Answer({Button::kNo, Button::kYes});
      QVERIFY(PressEnds(command) && !Busy());
      QCOMPARE(messages_.Take(), question);
      QCOMPARE(Server(), std::string("a: 2\nb: 3\n"));
      QVERIFY(PressAndClose(command).contains("a.conf"));
      QCOMPARE(messages_.Take(), question);
      QCOMPARE(Server(), std::string("a: 2\r\nb: 3\r\n"));
    }
  }

  void TooManyKindsOfSeriesOpenNoWindow() {
    std::string lines;
    String kinds;
    for (char kind = 'a'; kind <= 'k'; ++kind) {
      kinds += String(u"{s") + static_cast<char16_t>(kind) + u"}";
      lines += std::string("s") + kind + ": of_" + kind + "\r\n";
    }
    registry_->RegWriteString(RegistryRoot::kLocalMachine, u"Software\\Quenmar\\Options", u"Series",
                              kinds);
    WriteFile(*scratch_ / "conf/a.conf", lines);
    OpenOnFolders("a.conf");
    QCOMPARE(PressAndClose("Command3"), QString());
    QVERIFY(PressEnds("Command5") && !Busy());
    QCOMPARE(messages_.Take(), QStringList(2, "[16] Sorry, this tool only works with 10 series"));
    QCOMPARE(Server(), lines);
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
    registry_->RegWriteString(RegistryRoot::kLocalMachine, u"Software\\Quenmar\\Language", u"LNG8",
                              u"&A");
    language_ = Language::LoadLanguage(*registry_);
    Open();
    QCOMPARE(Get<QPushButton>("Command3")->text(), QString("&&A"));
    QCOMPARE(Get<QCheckBox>("Check1")->text(), QString("Select a config file from the list."));
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::MainTest)
#include "MainTest.moc"
